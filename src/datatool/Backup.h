#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include "datatool/Progress.h"

/// Copies of a pair in folders named by date and time, such as "2026-11-25 1830".
namespace backup {

/// What was made.
struct Report {
    QString folder;       // of the copy
    QStringList notes;    // in Czech
    QStringList removed;  // names of older backups
    QStringList stayed;   // names of older backups that could not be removed

    QString text() const;
};

/// Where backups go unless the user says otherwise.
QString defaultTarget();

/// Copies the pair in `folder` into a new folder below `target`. The program may work with it meanwhile: the
/// catalogue is copied before the pictures, of which none is ever removed, so that no film of the copy lacks
/// its picture. The copy gets its name only when it is checked and on disk; older ones are never replaced.
/// @param keep removes the oldest backups beyond so many; 0 removes none.
/// @throws RuntimeError when the pair cannot be read or is damaged, or the copy cannot be written; nothing is
///         left then.
Report run(const QString& folder, const QString& target, int keep, const QDateTime& now,
           const Progress& progress);

/// Copies the pair in `from` into the new folder `to`, readable by the owner only, and brings it to disk.
/// @return what should be known of the files read, in Czech.
/// @throws RuntimeError when that fails or the copy is damaged.
QStringList copyPair(const QString& from, const QString& to, const Progress& progress);

/// A name for `now` that nothing in `parent` has yet: `prefix`, date and time, and a counter if need be.
QString freeName(const QString& parent, const QString& prefix, const QDateTime& now);

}  // namespace backup
