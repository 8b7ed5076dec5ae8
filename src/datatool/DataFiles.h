#pragma once

#include <QByteArray>
#include <QString>

#include "platform/sqlite.h"

/// The pair of data files: catalogue and pictures.
namespace dataFiles {

/// The highest key that a row may get: keys are 32-bit numbers to the program, and new ones count on from the
/// highest.
inline constexpr qint32 highestKey = 2000000000;

QString cataloguePath(const QString& folder);
QString picturesPath(const QString& folder);

/// @throws RuntimeError 75 when `folder` is a file: users name one of the pair.
void refuseFile(const QString& folder);

/// Opens one of the program's own files and checks its header.
/// @throws RuntimeError, with the path, when it is missing, damaged or not one of them.
sqlite::Database checked(const QString& path, sqlite::Database::Mode mode);

/// Opens the catalogue in `folder`, so that a commit that has returned survives a power cut.
/// @throws RuntimeError when it is missing, damaged or not one of the program's own files.
sqlite::Database openCatalogue(const QString& folder);

/// The same for the pictures.
sqlite::Database openPictures(const QString& folder);

/// The folder of the pair that the program itself would open.
/// @throws RuntimeError 75 when its settings name a catalogue elsewhere, which makes no pair with the
/// pictures.
QString ownFolder();

/// One of the SQL scripts that the pair is created with, such as `catalogue.sql`.
QByteArray script(const QString& name);

/// Creates `data.ddb` and `pictures.ddb`, readable by the owner only, with the usual genres and departments:
/// both files or none. `folder` is created if it is missing.
/// @throws RuntimeError when one of the files already exists or they cannot be written.
void create(const QString& folder);

}  // namespace dataFiles
