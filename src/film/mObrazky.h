#pragma once

#include <QString>

#include "platform/ado.h"

/// The picture store: covers and previews in `tPicture` of the picture file. Each routine opens and closes
/// that file itself; the shared connection is not used. A film has at most one row per group, which keeps its
/// key when the picture is replaced.

/// Opens the picture file, which is always in the program folder, whatever the catalogue.
/// @throws RuntimeError when it cannot be opened.
void openPictureFile(ado::Connection& connection);

/// Stores the file at `path` as the cover of a film. Failures are skipped, and shown in a box after some of
/// the steps; the remaining columns are still written.
/// @return the key of the row; 0 when there is none.
qint32 UlozObal(qint32 film, const QString& path);

/// Stores the file at `path` as the preview of a film. Nothing is stored on failure.
/// @return the key of the row. @throws RuntimeError for any failure.
qint32 UlozNahled(qint32 film, const QString& path);

/// Writes a cover to `\data\obal.` plus its type in lower case. Failures are skipped; a failure to open the
/// row is shown in a box.
/// @return the path for the label, with the type as stored. "" when there is no such row.
QString ZobrazObal(qint32 id);

/// The same for a preview, to `\data\nahled.`.
QString ZobrazNahled(qint32 id);
