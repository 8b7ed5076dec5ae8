#include "toolkit/Frame.h"

#include <QPainter>

#include "toolkit/hairline.h"
#include "toolkit/shades.h"
#include "toolkit/twips.h"

namespace {

// Pixels of the layout.
constexpr int titleLeft = 8;
constexpr int titleGap = 3;
constexpr qreal radius = 3;

}  // namespace

Frame::Frame(QWidget* parent) : QGroupBox(parent) {}

void Frame::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QFontMetrics letters = fontMetrics();
    const int titleWidth = title().isEmpty() ? 0 : letters.horizontalAdvance(title());
    const int left = twips::scaled(titleLeft);
    const int beside = twips::scaled(titleGap);
    const qreal top = titleWidth > 0 ? letters.height() / 2 : 0;
    if (titleWidth > 0) {
        const QRect gap(left - beside, 0, titleWidth + 2 * beside, letters.height());
        painter.setClipRegion(QRegion(rect()).subtracted(gap));
    }
    hairline::drawRect(painter, QRectF(rect()).adjusted(0, top, 0, 0), radius, shades::line(palette()));
    if (titleWidth == 0) return;
    painter.setClipping(false);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(left, letters.ascent(), title());
}
