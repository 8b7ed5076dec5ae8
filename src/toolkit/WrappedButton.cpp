#include "toolkit/WrappedButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>
#include <utility>

WrappedButton::WrappedButton(QWidget* parent) : QPushButton(parent) {}

void WrappedButton::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    QRect inside = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
    const QIcon icon = std::exchange(option.icon, {});
    const QString caption = std::exchange(option.text, {});
    painter.drawControl(QStyle::CE_PushButton, option);
    if (!icon.isNull()) {
        const QRect place(inside.left(), inside.center().y() - iconSize().height() / 2 + 1,
                          iconSize().width(), iconSize().height());
        icon.paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
        inside.setLeft(place.right() + 1);
    }
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawText(inside, static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, caption);
}
