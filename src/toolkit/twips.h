#pragma once

/// Positions and sizes of windows are given in twips, 1440 per inch. Windows are laid out at 96 pixels per
/// inch, and Qt scales them from there.
namespace twips {

inline constexpr int perPixel = 15;

/// Twips in pixels, rounded to the nearest.
constexpr int toPixels(int twips) {
    return twips / perPixel + (2 * (twips % perPixel) + (twips < 0 ? -perPixel : perPixel)) / (2 * perPixel);
}

}  // namespace twips
