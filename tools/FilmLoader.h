#pragma once

#include <QString>
#include <functional>

/// Films from a file of comma-separated values. The first line names columns of `tDVD` in any letter case and
/// order; the file is in UTF-8.
namespace filmLoader {

/// Adds every film of the file `csv` to the catalogue in `folder`, all in one transaction. A film gets what
/// the file leaves out or leaves blank: empty texts, one disc, the language "neuvedeno", no pictures, its own
/// key as catalogue number.
/// @param progress is called now and then with the number of films read so far.
/// @return the number of films added.
/// @throws RuntimeError when a line is bad, with its number in the description, and when a file cannot be
///         read or written. Nothing has been added then.
qint64 load(const QString& folder, const QString& csv, const std::function<void(qint64)>& progress);

}  // namespace filmLoader
