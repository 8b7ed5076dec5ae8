#pragma once

#include "datatool/findings.h"

/// Values of films of a kind that the program cannot show or that no table takes.
namespace oddValues {

/// The columns of tDVD that hold texts.
inline constexpr const char* textColumns[] = {"KatCisl",  "CZJm",    "PuvJm",       "Zanr",   "Obsah",
                                              "Stat",     "Rezie",   "Delka",       "Rok",    "Herci",
                                              "Poznamka", "Nabidka", "JazykDetail", "Titulky"};

/// One line for each film that has any. Reads each film once.
findings::Kind of(const sqlite::Database& catalogue);

}  // namespace oddValues
