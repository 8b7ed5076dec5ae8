#pragma once

class QComboBox;
class QToolBar;

/// What screen readers are told beyond what Qt tells them by itself.
namespace accessibility {

/// Makes Qt describe the program's widgets as what they are: a frame as a panel, an ImageFrame as a picture
/// even while it is empty, and a widget that is a window as one. To be called once.
void install();

/// Names the inner parts of a combo box, its list and, if it has one, its line, after the box or its label.
/// They have the focus in its place.
void nameParts(const QComboBox& box);

/// Names the button that a tool bar shows when it is too narrow for all the others.
void nameParts(const QToolBar& bar);

}  // namespace accessibility
