#pragma once

#include <QString>

#include "platform/sqlite.h"

/// The protection of a data file: a mark that tells the program's own files from others, and a password
/// verifier, both in the SQLite header. It prevents opening a file by accident or with another program of
/// this kind; nothing is encrypted.
namespace password {

/// The format of the data files that this program reads and writes. It is part of the mark; see "A later
/// format" in docs/architecture.md for how to introduce a higher one.
inline constexpr qint32 dataFormat = 1;

/// Puts mark, format number and verifier into a new data file.
void stamp(const sqlite::Database& database, const QString& password);

/// Checks the header of a data file just opened, before SQLite reads it and acts on damaged fields.
/// @throws RuntimeError when the file cannot be read, is not a data file of this program, has a newer
///         format, a damaged header or another password.
void checkHeader(const sqlite::Database& database, const QString& password);

}  // namespace password
