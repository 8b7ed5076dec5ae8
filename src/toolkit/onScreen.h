#pragma once

#include <QWidget>

/// Keeps windows on the screen.
namespace onScreen {

/// Makes a window that is about to appear fit into the free area of its screen, its frame included: one that
/// can be sized becomes smaller, down to its least size, and then it is moved so that all of it, or else its
/// upper left corner, is in view. One that is left to the desktop to place is not moved. To be called when
/// the window has found its place, for a dialog after its show event. Other windows than usual ones and
/// dialogs stay as they are.
void keep(QWidget& window);

}  // namespace onScreen
