#pragma once

#include <QColor>
#include <QPalette>

/// Colours that are given, on a desktop whose own colours are dark.
namespace shades {

/// Whether light letters stand on a dark ground.
bool isDark(const QPalette& palette);

/// A given colour of letters as it is shown on a ground: itself on a light one, and a lighter one of the same
/// hue where it would be dark on dark.
QColor readable(const QColor& letters, const QColor& ground);

/// The colour of thin lines between parts of a window, which stand out from its ground a little.
QColor line(const QPalette& palette);

}  // namespace shades
