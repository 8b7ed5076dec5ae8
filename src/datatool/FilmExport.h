#pragma once

#include <QString>
#include <QStringList>

#include "datatool/Progress.h"

/// Exports films as CSV in the form that filmLoader reads: all columns of `tDVD` and, as `Oddeleni`, the name
/// of the department, blank if a film has the key of none that exists; UTF-8, separated by commas, lines
/// ended by CR LF, texts quoted, Null as `\N`.
namespace filmExport {

struct Report {
    qint64 films = 0;
    qint64 pictures = 0;
    QStringList missing = {};  // one line for each picture that could not be exported
};

/// Writes all films of the catalogue in `folder` to the new file `csv`.
/// @throws RuntimeError when the file already exists, when something cannot be read or written and when this
///         process is asked to end. No file is left then.
Report write(const QString& folder, const QString& csv, const Progress& progress);

/// Makes the new folder `target` with the same as `films.csv` and all pictures of the films as files, which
/// the columns `Obal` and `Nahled` name.
/// @throws RuntimeError as `write` does. No folder is left then; what a killed export has left
///         beside `target` is removed by the next one.
Report writeWithPictures(const QString& folder, const QString& target, const Progress& progress);

}  // namespace filmExport
