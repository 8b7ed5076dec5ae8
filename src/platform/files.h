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

/// Makes a file readable and writable for its owner only, where the file system knows owners; elsewhere it
/// stays as it is.
void keepToOwner(QFileDevice& file);

/// Brings what was written to an open file to disk. @return false when that failed, as on a full disk.
[[nodiscard]] bool sync(QFileDevice& file);

/// Begins to bring what was written to a file to disk, so that a later `sync` has less to wait for. Where the
/// system has nothing of the kind, `sync` does it all.
void startSync(const QString& path);

/// Brings the names of a folder's files to disk, so that a file renamed or created there keeps its name
/// through a power cut. A file system that cannot do it is left alone.
void syncFolder(const QString& folder);

/// Replaces the target of a QSaveFile by what was written, with both on disk when it returns.
/// @return false when any write failed; the target is then as it was.
[[nodiscard]] bool commit(QSaveFile& file);

}  // namespace files
