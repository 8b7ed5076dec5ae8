#pragma once

#include <QKeyEvent>
#include <QWidget>

/// Keys of windows in which Enter presses the button that has the focus and no other: where there are several
/// panels, or fields to type in beside a search, there is no one button to press otherwise.
namespace keys {

bool isEnter(const QKeyEvent& event);

/// Presses the focused button on Enter; boxes to tick are none. @return whether it did.
bool pressFocusedButton(const QWidget& window, const QKeyEvent& event);

}  // namespace keys
