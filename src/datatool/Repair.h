#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include "datatool/Progress.h"

/// Mends of a pair what can be mended without guessing.
namespace repair {

/// What was done.
struct Report {
    QString folder;
    QStringList steps;      // in Czech
    QStringList left;       // what is still wrong, one line each
    bool lostRows = false;  // of a damaged file
    bool lostFile = false;  // one was missing

    bool isWhole() const { return left.isEmpty() && !lostRows && !lostFile; }
    QString text() const;
};

/// Makes a backup beside `folder`, then mends indexes, picture keys, missing numbers and languages, and
/// deletes rows that hold nothing, in one transaction on both files; when that fails, the backup goes again.
/// Of a damaged pair all that can be read is first brought into a new one: page by page from a sound file,
/// row by row from a damaged one; a file that is missing or in which no row can be read becomes an empty one.
/// The former pair is put aside within `folder`. What was done stands in `repair.txt` there too.
/// @throws RuntimeError when the program holds `folder`, when nothing can be read of either file and when
/// they
///         cannot be read or written.
Report run(const QString& folder, const QDateTime& now, const Progress& progress);

}  // namespace repair
