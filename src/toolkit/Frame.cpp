#include "toolkit/Frame.h"

#include <QPainter>
#include <cmath>

#include "toolkit/shades.h"
#include "toolkit/twips.h"

namespace {

// Pixels of the layout.
constexpr int titleLeft = 8;
constexpr int titleGap = 3;
constexpr qreal radius = 3;

/// The middle of a line along the inner edge of `rect` that fills whole pixels of the screen, at any scale.
/// @param width of the line, in those pixels.
QRectF wholePixels(const QPainter& painter, const QRectF& rect, qreal width) {
    const QTransform toScreen = painter.deviceTransform();
    const QRectF place = toScreen.mapRect(rect);
    const QRectF whole(QPointF(std::round(place.left()), std::round(place.top())),
                       QPointF(std::round(place.right()), std::round(place.bottom())));
    const qreal half = width / 2;
    return toScreen.inverted().mapRect(whole.adjusted(half, half, -half, -half));
}

}  // namespace

Frame::Frame(QWidget* parent) : QGroupBox(parent) {}

void Frame::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics letters = fontMetrics();
    const int titleWidth = title().isEmpty() ? 0 : letters.horizontalAdvance(title());
    const int left = twips::scaled(titleLeft);
    const int beside = twips::scaled(titleGap);
    const qreal top = titleWidth > 0 ? letters.height() / 2 : 0;
    if (titleWidth > 0) {
        const QRect gap(left - beside, 0, titleWidth + 2 * beside, letters.height());
        painter.setClipRegion(QRegion(rect()).subtracted(gap));
    }
    const qreal pixels = std::max(1.0, std::floor(devicePixelRatio()));
    painter.setPen(QPen(shades::line(palette()), pixels / devicePixelRatio()));
    const QRectF line = wholePixels(painter, QRectF(rect()).adjusted(0, top, 0, 0), pixels);
    painter.drawRoundedRect(line, radius, radius);
    if (titleWidth == 0) return;
    painter.setClipping(false);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(left, letters.ascent(), title());
}
