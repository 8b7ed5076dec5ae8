#pragma once

#include <QToolBar>

namespace barKeys {

/// Makes the buttons of a tool bar reachable with Tab, as Qt leaves most of them to the mouse: Enter presses
/// the focused one, Down opens its menu. To be called when the bar is complete.
void install(QToolBar& bar);

}  // namespace barKeys
