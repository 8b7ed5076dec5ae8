#pragma once

#include "platform/Outside.h"

class QPrinter;

/// Paints pages on printers.
namespace pagePrinter {

/// True when the page's picture fits on the printer's paper as it will be turned.
bool fits(const PicturePage& page, const QPrinter& printer);

/// Prints a page, to the same size whatever the printer's resolution. The printer's paper stays.
/// @throws RuntimeError 53 and 481 for the picture, before anything is printed; 482 when the printer fails or
/// the
///         picture cannot be decoded.
void print(const PicturePage& page, QPrinter& printer);

}  // namespace pagePrinter
