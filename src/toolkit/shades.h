#pragma once

#include <QColor>
#include <QPalette>

/// Adapting fixed colours to a dark desktop theme.
namespace shades {

/// Whether the palette has light text on a dark background.
bool isDark(const QPalette& palette);

/// A text colour made readable on a background: unchanged on a light one, lighter in the same hue if both are
/// dark.
QColor readable(const QColor& letters, const QColor& ground);

/// The colour of thin separating lines, slightly different from the background.
QColor line(const QPalette& palette);

}  // namespace shades
