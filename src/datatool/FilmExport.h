#pragma once

#include <QString>
#include <functional>

/// Exports films as CSV in the form that filmLoader reads.
namespace filmExport {

/// Writes all films of the catalogue in `folder` to the new file `csv` in UTF-8: all columns of `tDVD` and,
/// as `Oddeleni`, the name of the department, blank if a film has the key of none that exists; separated by commas, lines ended by CR LF, texts quoted, Null
/// as `\N`.
/// @param progress called from time to time with the number of films written so far.
/// @return the number of films.
/// @throws RuntimeError when the file already exists, when something cannot be read or written and when this
///         process is asked to end. No file is left then.
qint64 write(const QString& folder, const QString& csv, const std::function<void(qint64)>& progress);

}  // namespace filmExport
