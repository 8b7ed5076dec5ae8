#include "toolkit/keys.h"

#include <QAbstractButton>

bool keys::isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool keys::pressFocusedButton(const QWidget& window, const QKeyEvent& event) {
    auto* button = qobject_cast<QAbstractButton*>(window.focusWidget());
    // Check boxes are excluded: Enter is meant to go on, not to toggle.
    if (!isEnter(event) || button == nullptr || !button->isVisible() || button->isCheckable()) return false;
    // Auto-repeat must not run a list or a search over and over.
    if (!event.isAutoRepeat()) button->click();
    return true;
}
