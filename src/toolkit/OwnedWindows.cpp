#include "toolkit/OwnedWindows.h"

#include <QScreen>
#include <QWindow>
#include <algorithm>

namespace {

void putAbove(QWidget& window, const QWidget& owner) {
    window.winId();  // creates the native window, which the transient parent is set on
    window.windowHandle()->setTransientParent(owner.window()->windowHandle());
}

}  // namespace

void OwnedWindows::placeBesideOthers(QWidget& window) const {
    const auto other = std::find_if(windows_.rbegin(), windows_.rend(), [&](const QPointer<QWidget>& open) {
        return open != nullptr && open != &window && open->isVisible() &&
               open->metaObject() == window.metaObject();
    });
    if (other == windows_.rend()) return;
    constexpr QPoint step(30, 30);  // pixels: shows the title of the one below
    // Both without their frames, as that of the new one is not known yet.
    const QRect place = (*other)->geometry().translated(step);
    const QRect screen = (*other)->screen()->availableGeometry();
    window.move(screen.contains(place) ? place.topLeft() : screen.topLeft());
}

void OwnedWindows::show(QWidget& window, const QWidget& owner) {
    if (!window.isVisible()) {
        putAbove(window, owner);
        placeBesideOthers(window);
        windows_.removeAll(nullptr);
        windows_.removeAll(&window);
        windows_.append(&window);
    }
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void OwnedWindows::release() {
    // A window with a transient parent does not keep the application running.
    for (const QPointer<QWidget>& window : windows_) {
        if (window != nullptr && window->windowHandle() != nullptr)
            window->windowHandle()->setTransientParent(nullptr);
    }
    windows_.clear();
}

void execAbove(QDialog& dialog, const QWidget& owner) {
    dialog.hide();  // a visible window does not become modal
    putAbove(dialog, owner);
    dialog.exec();
}
