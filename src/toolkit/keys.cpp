#include "toolkit/keys.h"

#include <QAbstractButton>

bool keys::isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool keys::pressFocusedButton(const QWidget& window, const QKeyEvent& event) {
    auto* button = qobject_cast<QAbstractButton*>(window.focusWidget());
    if (!isEnter(event) || button == nullptr) return false;
    button->click();
    return true;
}
