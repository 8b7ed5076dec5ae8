#pragma once

#include <QColor>
#include <QPainter>

/// Thin lines that fill whole pixels of the screen at every scale. Drawn as usual, a line of one pixel is
/// smeared over two at 125 or 150 %, or hidden by the control beside it.
namespace hairline {

/// Draws a line along the inner edge of `rect`, as many whole pixels of the screen wide as one of the window
/// has.
/// @param radius of the corners, in pixels of the window.
void drawRect(QPainter& painter, const QRectF& rect, qreal radius, const QColor& colour);

/// Lets the style of the application draw the frames of lists and text boxes so, if a screen has a scale that
/// is not whole and the style is one that needs it.
void improveStyle();

}  // namespace hairline
