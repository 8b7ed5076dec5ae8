#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

/// Whole files, read and written so that nothing is half done.
namespace files {

/// All bytes of a file. @throws RuntimeError 53 when there is no such file, 75 when it cannot be read.
QByteArray readAll(const QString& path);

/// Writes the pieces one after the other into a file that its owner alone can read. A file that stands there
/// is replaced when all is written, and stays as it was otherwise.
/// @throws RuntimeError 75 when it cannot be written to, 61 when not all could be written.
void write(const QString& path, const QByteArrayList& pieces);

/// Copies a file in the place of whatever stands there, with the user's usual permissions. One that fails
/// leaves what stands there as it was. @throws RuntimeError as the two above do.
void copy(const QString& from, const QString& to);

}  // namespace files
