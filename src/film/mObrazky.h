#pragma once

#include <QString>

#include "platform/ado.h"

/// The picture store: a film's cover and preview in `tPicture` of the picture file. Each routine opens that
/// file for itself and closes it again; the shared connection is not touched. A film has at most one row for
/// each group, which is found again by the pair and keeps its key.

/// Opens the picture file, which lies in the program folder whatever catalogue is in use.
/// @throws RuntimeError when it cannot be opened.
void openPictureFile(ado::Connection& connection);

/// Stores the file at `path` as the cover of a film. What fails is skipped; a failure is told in a box after
/// some of the steps, and the other columns are written all the same.
/// @return the key of the row; 0 when there is none.
qint32 UlozObal(qint32 film, const QString& path);

/// Stores the file at `path` as the preview of a film. The first failure ends it, and nothing is stored.
/// @return the key of the row. @throws RuntimeError for any failure.
qint32 UlozNahled(qint32 film, const QString& path);

/// Takes a cover out to `\data\obal.` and its type in lower case. What fails is skipped; a failure to open
/// the row is told in a box.
/// @return the path for the label: with the type as it stands in the row. "" when there is no such row.
QString ZobrazObal(qint32 id);

/// The same for a preview, to `\data\nahled.` and its type.
QString ZobrazNahled(qint32 id);
