#pragma once

/// Positions and sizes of windows are given in twips, 15 to a pixel of a window laid out at 96 pixels per
/// inch. One factor makes all windows larger or smaller together with the desktop's letters; see letters.h.
/// Qt scales them from there to the screen.
namespace twips {

/// How many times larger than laid out windows are: 1 until it is set.
double factor();
/// To be called before the first window is made. @param factor above 0.
void setFactor(double factor);

/// Twips in pixels, rounded to the nearest.
int toPixels(int twips);
/// Pixels in twips, rounded to the nearest.
int fromPixels(int pixels);
/// A length of the layout, in its pixels, in pixels of the window, rounded to the nearest.
int scaled(int layoutPixels);

}  // namespace twips
