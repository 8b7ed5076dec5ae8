#include "toolkit/ListHeader.h"

#include <QMouseEvent>
#include <QPainter>

ListHeader::ListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setStretchLastSection(false);
    setSectionsMovable(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void ListHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    if (count() == 0 || length() >= viewport()->width()) return;
    const int last = count() - 1;
    QRect section = viewport()->rect();
    section.setLeft(sectionViewportPosition(last));
    QPainter painter(viewport());
    paintSection(&painter, section, last);
}

QPointF ListHeader::pressed(const QPointF& position) const {
    // At the edge itself the width of the column is changed.
    const int behind = length() - offset() + style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
    if (count() == 0 || position.x() < behind) return position;
    const int last = count() - 1;
    return {sectionViewportPosition(last) + sectionSize(last) / 2.0, position.y()};
}

QMouseEvent ListHeader::moved(const QMouseEvent& event) const {
    return {event.type(),   pressed(event.position()), event.scenePosition(), event.globalPosition(),
            event.button(), event.buttons(),           event.modifiers(),     event.pointingDevice()};
}

void ListHeader::mousePressEvent(QMouseEvent* event) {
    QMouseEvent inside = moved(*event);
    QHeaderView::mousePressEvent(&inside);
}

void ListHeader::mouseReleaseEvent(QMouseEvent* event) {
    QMouseEvent inside = moved(*event);
    QHeaderView::mouseReleaseEvent(&inside);
}

void ListHeader::mouseDoubleClickEvent(QMouseEvent* event) {
    QMouseEvent inside = moved(*event);
    QHeaderView::mouseDoubleClickEvent(&inside);
}
