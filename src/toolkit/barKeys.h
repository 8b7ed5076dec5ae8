#pragma once

#include <QToolBar>

namespace barKeys {

/// Makes tool bar buttons reachable with Tab, from left to right and bar by bar; Qt leaves most of them to
/// the mouse. Enter presses the focused button, Down opens its menu. Call it once the bars are complete.
void install(const QList<QToolBar*>& bars);

}  // namespace barKeys
