#pragma once

#include <memory>

class frmMaster;

/// The start of the program: the splash screen, then the main window and, once that is painted, the offer of
/// a newer version. It returns with the main window open; the event loop runs until the last window is
/// closed.
/// @param master set to the main window as soon as it exists, so that it stays visible behind the box of a
///               later failure. Stays null, after a box, when there is no catalogue file.
void Main(std::unique_ptr<frmMaster>& master);
