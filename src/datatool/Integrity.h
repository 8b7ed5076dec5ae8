#pragma once

#include <QStringList>

#include <functional>

#include "platform/sqlite.h"

/// Whether a data file can be relied on, whatever its rows say.
namespace integrity {

/// Told from time to time how much is done, and of how much, both by estimate.
using Step = std::function<void(qint64 done, qint64 all)>;

/// How many faults the engine finds in the structure of a file, at least; 0 for a sound file.
/// @throws RuntimeError when the file cannot be read for another reason than damage.
qsizetype damage(const sqlite::Database& database, const Step& step);

/// The indexes that do not hold exactly the rows of their tables, or not in the order of today's collation.
/// The structure of the file must be sound.
QStringList wrongIndexes(const sqlite::Database& database, const Step& step);

}  // namespace integrity
