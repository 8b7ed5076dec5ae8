#pragma once

#include <QStringList>

#include "datatool/Progress.h"
#include "platform/sqlite.h"

/// Brings what can still be read of a damaged file into a new one.
namespace salvage {

/// What of a file leads to its rows.
enum class Trust {
    nothing,
    leaves,       // the pages of the rows alone
    leavesFirst,  // the trees too, where a row is on none of these
    all
};

/// What came of all tables of a file.
struct Result {
    QStringList lines;  // one for each table, in Czech
    qint64 copied = 0;  // rows
    // Keys that could not be read, which is at least the number of rows lost; of a table whose tree is
    // damaged, so that the number cannot be told, which its line says, one at least.
    qint64 lost = 0;
    QStringList unknownKeys;  // tables of which it cannot be told what keys they have given out
};

/// Copies table by table. Where a page cannot be read, only the rows of that page are left out. Keys that the
/// old file has given out are not given again.
/// @param most what may be trusted; the trees of tables that are found damaged are trusted less.
/// @throws RuntimeError when the new file cannot be written.
Result copy(const sqlite::Database& damaged, const sqlite::Database& made, Trust most,
            const Progress& progress);

/// Writes `copy`, a copy of the file `path` with the header of the new file `made` of the same kind, for a
/// file whose own header is damaged or tells another size than the file has: the schema and the pages follow
/// it. If need be, the schema too is that of `made`. What a write-ahead log beside the file holds is played
/// in.
/// @return what may be trusted; `nothing` when the file has no page to be read.
/// @throws RuntimeError 75 or 61 when the copy cannot be written.
Trust copyWithHeader(const QString& path, const sqlite::Database& made, const QString& copy);

/// Lets new rows of a table get keys above `given` only.
void keepKeys(const sqlite::Database& made, const QString& table, qint64 given);

}  // namespace salvage
