#pragma once

#include <memory>

class frmMaster;

/// The entry routine: the order in which the program starts. The splash picture comes first, then the main
/// window, and once that is painted the newer version if there is one and it is wanted. It returns once the
/// windows stand; the program then runs on their events and ends with the last visible window.
/// @param master gets the main window as soon as there is one, so that it stands behind the box of a failure
///               that comes later. It stays null when there is no catalogue file, which a box has told.
void Main(std::unique_ptr<frmMaster>& master);
