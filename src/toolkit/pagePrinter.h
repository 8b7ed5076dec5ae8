#pragma once

#include "platform/Outside.h"

class QPrinter;

/// Paints pages on printers.
namespace pagePrinter {

/// True when the page's picture fits on the printer's paper in the page's orientation.
bool fits(const PicturePage& page, const QPrinter& printer);

/// Prints a page on the printer's paper, at the same size whatever the resolution.
/// @throws RuntimeError 53 and 481 for the picture, before anything is printed; 482 when the printer fails
///         or the picture cannot be decoded.
void print(const PicturePage& page, QPrinter& printer);

}  // namespace pagePrinter
