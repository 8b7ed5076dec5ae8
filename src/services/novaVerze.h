#pragma once

#include <QString>

#include "core/Sites.h"

/// Address of the installer of the newest version.
QString newVersionAddress(const Sites& sites);

/// Whether a version such as "1-0-24" is newer than this program's. Numbers behind the one that decides are
/// not looked at.
/// @throws RuntimeError 9 when a number that is looked at is missing, 13 when it is none.
bool isNewer(const QString& version);

/// Asks the update host for the newest version, keeping its answer in `\data\dvdver.inf`. The answer's first
/// field counts: up to a comma or line end, without the quotes around it.
/// @return false also when there is no answer.
/// @throws RuntimeError 62 for an empty answer, and as above.
bool JeNovaVerze(const Sites& sites);
