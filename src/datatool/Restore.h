#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

#include "datatool/Progress.h"
#include "platform/FolderLock.h"
#include "platform/sqlite.h"

/// Puts a backup into the place of a pair.
namespace restore {

/// What was done.
struct Report {
    QString folder;
    QString aside;  // folder of the former pair; "" when there was none
    QStringList notes;

    QString text() const;
};

/// Checks the backup and puts a copy of it in place. The former pair goes into a folder named by date and
/// time within `folder`; of a linked file, the link becomes a file, which the report tells. A kill at any
/// moment leaves a whole pair: see core/pairReplacement.
/// @throws RuntimeError when `backup` holds no pair, both are the same folder, the program holds `folder`,
/// another one writes to it,
///         the backup is damaged, or files cannot be written; the former pair then stays.
Report run(const QString& backup, const QString& folder, const QDateTime& now, const Progress& progress);

/// Refuses a folder that is in use.
/// @throws RuntimeError when another program holds the lock.
void refuseTaken(const FolderLock& lock, const QString& folder);

/// Keeps all others from writing to the pair in `folder` as long as the result lives. A file that is missing
/// or damaged is left alone.
/// @throws RuntimeError when another program is writing for longer than the busy timeout.
std::vector<sqlite::Database> holdPair(const QString& folder);

/// A new folder within `folder` for a pair that is put aside.
QString asideFolder(const QString& folder, const QDateTime& now);

}  // namespace restore
