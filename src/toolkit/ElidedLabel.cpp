#include "toolkit/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const bool whole = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), whole ? QString() : text(), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), static_cast<int>(alignment()),
                     fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
}
