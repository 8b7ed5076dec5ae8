#pragma once

#include <QKeyEvent>
#include <QWidget>

/// Keys of windows without a default button: several panels, or fields beside a search. Enter presses the
/// focused button there and no other.
namespace keys {

bool isEnter(const QKeyEvent& event);

/// Clicks the focused button on Enter, unless it is checkable. @return whether the key was handled.
bool pressFocusedButton(const QWidget& window, const QKeyEvent& event);

}  // namespace keys
