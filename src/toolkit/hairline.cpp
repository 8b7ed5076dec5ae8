#include "toolkit/hairline.h"

#include <QApplication>
#include <QProxyStyle>
#include <QScreen>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

#include "toolkit/shades.h"

using namespace Qt::StringLiterals;

namespace {

bool isWhole(qreal scale) {
    return scale == std::floor(scale);
}

class WholeFrames final : public QProxyStyle {
 public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const bool inPopup = widget != nullptr && widget->isWindow();
        if (element != PE_Frame || inPopup || isWhole(painter->device()->devicePixelRatioF()))
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
        hairline::drawRect(*painter, option->rect, 0, shades::line(option->palette));
    }
};

}  // namespace

void hairline::drawRect(QPainter& painter, const QRectF& rect, qreal radius, const QColor& colour) {
    const qreal scale = painter.device()->devicePixelRatioF();
    const qreal width = std::max(1.0, std::floor(scale));
    const QTransform toScreen = painter.deviceTransform();
    const QRectF place = toScreen.mapRect(rect);
    const QRectF whole(QPointF(std::round(place.left()), std::round(place.top())),
                       QPointF(std::round(place.right()), std::round(place.bottom())));
    const qreal half = width / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, width / scale, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(toScreen.inverted().mapRect(whole.adjusted(half, half, -half, -half)), radius,
                            radius);
    painter.restore();
}

void hairline::improveStyle() {
    const QList<QScreen*> screens = QGuiApplication::screens();
    const bool whole = std::all_of(screens.begin(), screens.end(),
                                   [](const QScreen* screen) { return isWhole(screen->devicePixelRatio()); });
    if (!whole && QApplication::style()->name() == u"fusion") QApplication::setStyle(new WholeFrames);
}
