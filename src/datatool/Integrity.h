#pragma once

#include <QStringList>

#include "platform/sqlite.h"

/// Whether a data file can be relied on, whatever its rows say.
namespace integrity {

/// How many faults the engine finds in the structure of a file, at least; 0 for a sound file.
/// @throws RuntimeError when the file cannot be read for another reason than damage.
qsizetype damage(const sqlite::Database& database);

/// The indexes that do not hold exactly the rows of their tables, or not in the order of today's collation.
/// The structure of the file must be sound.
QStringList wrongIndexes(const sqlite::Database& database);

}  // namespace integrity
