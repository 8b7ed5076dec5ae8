#include "toolkit/onScreen.h"

#include <QDialog>
#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace {

/// The frame that the desktop will put around a window. Before the window has appeared nobody knows it, so
/// this is a usual one: a title bar and a thin border.
QMargins frameOf(const QWidget& window) {
    if (window.windowFlags().testFlag(Qt::FramelessWindowHint)) return {};
    constexpr int border = 4;
    return {border, window.style()->pixelMetric(QStyle::PM_TitleBarHeight) + border, border, border};
}

int moved(int first, int length, int firstFree, int freeLength) {
    return std::max(firstFree, std::min(first, firstFree + freeLength - length));
}

}  // namespace

void onScreen::keep(QWidget& window) {
    const Qt::WindowType kind = window.windowType();
    if (kind != Qt::Window && kind != Qt::Dialog) return;
    if (window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) return;
    const QRect room = window.screen()->availableGeometry().marginsRemoved(frameOf(window));
    const QRect place = window.geometry();
    if (room.contains(place)) return;
    const QSize size = place.size().boundedTo(room.size()).expandedTo(window.minimumSize());
    const QPoint corner(moved(place.x(), size.width(), room.x(), room.width()),
                        moved(place.y(), size.height(), room.y(), room.height()));
    // The desktop finds the place for a window that has none yet; a dialog has found its own.
    if (qobject_cast<const QDialog*>(&window) == nullptr && !window.testAttribute(Qt::WA_Moved)) {
        window.resize(size);
    } else {
        window.setGeometry(QRect(corner, size));
    }
}
