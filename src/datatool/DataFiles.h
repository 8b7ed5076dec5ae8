#pragma once

#include <QByteArray>
#include <QString>

#include "platform/sqlite.h"

/// The ready-made pair of data files.
namespace dataFiles {

/// The highest key that a row may get: keys are 32-bit numbers to the program, and new ones count on from the
/// highest.
inline constexpr qint32 highestKey = 2000000000;

QString cataloguePath(const QString& folder);
QString picturesPath(const QString& folder);

/// Opens the catalogue in `folder`.
/// @throws RuntimeError when it is missing, damaged or not the program's own.
sqlite::Database openCatalogue(const QString& folder);

/// One of the scripts of statements that the pair is made with, such as `catalogue.sql`.
QByteArray script(const QString& name);

/// Makes `data.ddb` and `pictures.ddb` in `folder` (made when missing), readable for the owner only, with the
/// usual genres and departments. Either both files stand afterwards or none.
/// @throws RuntimeError when one of them is there already, or when they cannot be written.
void create(const QString& folder);

}  // namespace dataFiles
