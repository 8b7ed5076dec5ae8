#include "toolkit/Frame.h"

#include <QPainter>

#include "toolkit/shades.h"

namespace {

constexpr int titleLeft = 8;
constexpr int titleGap = 3;
constexpr qreal radius = 3;

}  // namespace

Frame::Frame(QWidget* parent) : QGroupBox(parent) {}

void Frame::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics letters = fontMetrics();
    const int titleWidth = title().isEmpty() ? 0 : letters.horizontalAdvance(title());
    const qreal top = titleWidth > 0 ? letters.height() / 2 : 0;
    if (titleWidth > 0) {
        const QRect gap(titleLeft - titleGap, 0, titleWidth + 2 * titleGap, letters.height());
        painter.setClipRegion(QRegion(rect()).subtracted(gap));
    }
    painter.setPen(shades::line(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, top + 0.5, -0.5, -0.5), radius, radius);
    if (titleWidth == 0) return;
    painter.setClipping(false);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(titleLeft, letters.ascent(), title());
}
