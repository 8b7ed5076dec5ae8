#pragma once

#include <QFont>
#include <QSize>
#include <QWidget>

/// Letters of the desktop's size and kind, and windows large enough for them.
namespace letters {

/// The font of all windows, and how many times larger than laid out it wants them.
struct Fit {
    QFont font;
    double factor;
};

/// What a desktop's font asks for. Windows are laid out for 8.25 points of Liberation Sans and its equals:
/// for these the factor is 1, otherwise the ratio of the sizes, or of the widths of usual captions where that
/// is larger. The largest window that cannot be sized still fits into `screen`, for which font and factor may
/// become smaller, down to 0.8.
/// @param desktop its font for windows; Qt's own default counts as no wish, and gives the font laid out for.
/// @param screen the area that is free for windows, in pixels.
Fit fitTo(const QFont& desktop, const QSize& screen);

/// Sets the application's font and the factor of twips.h.
void use(const Fit& fit);
/// Sets the application's font again when something else than `use` has changed it.
void keepInUse();

/// Makes a form that has just been set up as much larger as its letters are: the places of its controls,
/// their icons, margins and limits. A label that is too low for a line of its font grows around its middle.
void scale(QWidget& form);

}  // namespace letters
