#pragma once

/// Places and sizes of windows are given in twips, 1440 to the inch; the windows are laid out at 96 pixels to
/// the inch, and Qt scales them from there.
namespace twips {

inline constexpr int perPixel = 15;

/// Pixels for a number of twips, rounded to the nearest.
constexpr int toPixels(int twips) {
    return twips / perPixel + (2 * (twips % perPixel) + (twips < 0 ? -perPixel : perPixel)) / (2 * perPixel);
}

}  // namespace twips
