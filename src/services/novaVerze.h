#pragma once

#include <QString>
#include <array>

#include "core/Sites.h"

/// Address of the installer of the newest version.
QString newVersionAddress(const Sites& sites);

/// Whether a version such as "1-0-24" is newer than `own`: major, minor, revision. Numbers after the deciding
/// one are not read.
/// @throws RuntimeError 9 when a number that is read is missing, 13 when it is not numeric.
bool isNewer(const QString& offered, const std::array<int, 3>& own);

/// Downloads the newest version number to `\data\dvdver.inf` and compares it. Only the first field is read:
/// up to a comma or line end, without its quotes.
/// @return false also when the download fails.
/// @throws RuntimeError 62 for an empty answer, and as above.
bool JeNovaVerze(const Sites& sites);
