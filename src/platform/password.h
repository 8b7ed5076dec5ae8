#pragma once

#include <QString>

#include "platform/sqlite.h"

/// The gate in front of a data file: a mark that tells the program's own files from others, and a verifier of
/// the password, both in the header of the SQLite file. The password keeps a file from being opened by
/// accident or by another program of this kind; it does not encrypt anything.
namespace password {

/// Puts mark and verifier into a new data file.
void stamp(const sqlite::Database& database, const QString& password);

/// Reads the header of a data file that has just been opened, before the engine does, which would take some
/// kinds of damage for an order.
/// @throws RuntimeError when the file cannot be read, is not a data file of this program, is damaged in its
///         header, or has another password.
void checkHeader(const sqlite::Database& database, const QString& password);

}  // namespace password
