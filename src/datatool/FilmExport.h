#pragma once

#include <QString>
#include <functional>

/// Films to a file of separated values, as filmLoader reads it.
namespace filmExport {

/// Writes every film of the catalogue in `folder` to the new file `csv` in UTF-8: all columns of `tDVD` and,
/// as `Oddeleni`, the department's name; separated by commas, lines ended by CR LF, texts in quotes, Null as
/// `\N`.
/// @param progress is called now and then with the number of films written so far.
/// @return the number of films.
/// @throws RuntimeError when the file is there already, when something cannot be read or written and when
/// this process
///         is asked to end. No file is left then.
qint64 write(const QString& folder, const QString& csv, const std::function<void(qint64)>& progress);

}  // namespace filmExport
