#include "toolkit/keys.h"

#include <QAbstractButton>

bool keys::isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool keys::pressFocusedButton(const QWidget& window, const QKeyEvent& event) {
    auto* button = qobject_cast<QAbstractButton*>(window.focusWidget());
    // A box to tick is no button to press: whoever presses Enter to go on does not want it changed.
    if (!isEnter(event) || button == nullptr || button->isCheckable()) return false;
    // A key held down is one press: a list or a search is not to be run over and over.
    if (!event.isAutoRepeat()) button->click();
    return true;
}
