#pragma once

#include <QStringList>

#include "platform/sqlite.h"

/// Brings what can still be read of a damaged file into a new one.
namespace salvage {

/// What came of all tables of a file.
struct Result {
    QStringList lines;  // one for each table, in Czech
    qint64 lost = 0;    // keys that could not be read, which is at least the number of rows lost
};

/// Copies table by table. Where a page cannot be read, the range of keys is halved until only the rows of
/// that page are left out. Keys that the old file has given out are not given again.
/// @throws RuntimeError when the new file cannot be written.
Result copy(const sqlite::Database& damaged, const sqlite::Database& made);

}  // namespace salvage
