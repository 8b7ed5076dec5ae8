#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

class QFileDevice;
class QSaveFile;

/// Reads and writes whole files, all or nothing.
namespace files {

/// All bytes of a file. @throws RuntimeError 53 when there is no such file, 75 when it cannot be read.
QByteArray readAll(const QString& path);

/// Writes the pieces in order to a file readable by its owner only. An existing file is replaced once all is
/// written, and unchanged on failure.
/// @throws RuntimeError 75 when it cannot be opened for writing, 61 when not all could be written.
void write(const QString& path, const QByteArrayList& pieces);

/// Copies a file over `to`, with default permissions. On failure `to` is unchanged.
/// @throws RuntimeError as the two above do.
void copy(const QString& from, const QString& to);

/// Makes a file readable and writable for its owner only. No effect on file systems without owners.
void keepToOwner(QFileDevice& file);

/// Flushes an open file and syncs it to disk.
/// @return false on failure, such as a full disk.
[[nodiscard]] bool sync(QFileDevice& file);

/// Begins to bring what was written to a file to disk, so that a later `sync` has less to wait for. Where the
/// system has nothing of the kind, `sync` does it all.
void startSync(const QString& path);

/// Syncs a folder, so that a file just renamed or created in it survives a power cut. File systems that
/// cannot do this are skipped.
void syncFolder(const QString& folder);

/// Syncs the content of a QSaveFile, renames it over its target and syncs the folder.
/// @return false when any write failed; the target is unchanged then.
[[nodiscard]] bool commit(QSaveFile& file);

}  // namespace files
