#include "toolkit/twips.h"

#include <cmath>

namespace {

constexpr double perPixel = 15;
double chosen = 1;

int nearest(double length) {
    return static_cast<int>(std::lround(length));
}

}  // namespace

double twips::factor() {
    return chosen;
}

void twips::setFactor(double factor) {
    chosen = factor;
}

int twips::toPixels(int twips) {
    return nearest(twips * chosen / perPixel);
}

int twips::fromPixels(int pixels) {
    return nearest(pixels * perPixel / chosen);
}

int twips::scaled(int layoutPixels) {
    return nearest(layoutPixels * chosen);
}
