#pragma once

#include <QToolBar>

namespace barKeys {

/// Makes the buttons of tool bars reachable with Tab, from left to right and bar by bar, as Qt leaves most of
/// them to the mouse: Enter presses the focused one, Down opens its menu. To be called when the bars are
/// complete.
void install(const QList<QToolBar*>& bars);

}  // namespace barKeys
