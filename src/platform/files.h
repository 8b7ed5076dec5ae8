#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

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

}  // namespace files
