#pragma once

#include "platform/Outside.h"

class QPrinter;

/// Paints pages on printers.
namespace pagePrinter {

/// Prints a page, in the same size at any resolution. The printer's paper is not changed.
/// @throws RuntimeError 53 and 481 for the picture, before anything is printed; 482 when the printer fails.
void print(const PicturePage& page, QPrinter& printer);

}  // namespace pagePrinter
