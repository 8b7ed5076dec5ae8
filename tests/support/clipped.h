#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QWidget>

/// Captions of a window that need more room than they have; those of controls that are never shown do not
/// count.
inline QStringList clipped(const QWidget& window) {
    QStringList found;
    const auto expectRoom = [&found](const QWidget& control, int width) {
        if (width > control.width() || control.fontMetrics().height() > control.height()) {
            found +=
                QStringLiteral("%1 needs %2 of %3").arg(control.objectName()).arg(width).arg(control.width());
        }
    };
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (!label->text().isEmpty() && !label->isHidden()) expectRoom(*label, label->sizeHint().width());
    }
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (button->text().isEmpty() || button->isHidden()) continue;
        const bool plain = button->inherits("QPushButton");
        const int icon = button->icon().isNull() ? 0 : button->iconSize().width();
        expectRoom(*button, plain ? button->fontMetrics().horizontalAdvance(button->text()) + 12 + icon
                                  : button->sizeHint().width());
    }
    return found;
}
