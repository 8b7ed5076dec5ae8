#include "toolkit/shades.h"

#include <algorithm>

namespace {

constexpr int middle = 128;          // of 255
constexpr int lightestDark = 160;    // least lightness of text on a dark background
constexpr int strongestLight = 140;  // its highest saturation; light pure colours dazzle on dark
constexpr int lineWeight = 28;       // percent of text colour in a line, the rest is background

int mixed(int letters, int ground) {
    return (letters * lineWeight + ground * (100 - lineWeight)) / 100;
}

}  // namespace

bool shades::isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QColor shades::readable(const QColor& letters, const QColor& ground) {
    if (ground.lightness() >= middle || letters.lightness() >= lightestDark) return letters;
    return QColor::fromHsl(std::max(letters.hslHue(), 0), std::min(letters.hslSaturation(), strongestLight),
                           lightestDark);
}

QColor shades::line(const QPalette& palette) {
    const QColor letters = palette.color(QPalette::WindowText);
    const QColor ground = palette.color(QPalette::Window);
    return {mixed(letters.red(), ground.red()), mixed(letters.green(), ground.green()),
            mixed(letters.blue(), ground.blue())};
}
