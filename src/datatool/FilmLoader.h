#pragma once

#include <QString>
#include <QStringList>
#include <functional>

/// Films from a file of separated values. The first line names columns of `tDVD` in any letter case and
/// order, and `Oddeleni` for the department by its name; CsvText tells which files it can read.
namespace filmLoader {

/// What became of a file.
struct Report {
    QString csv;
    QString folder;
    QString encoding;
    QChar separator;
    qint64 read = 0;          // films in the file
    qint64 added = 0;         // films that the catalogue has more than before
    QStringList departments;  // names of those that were made

    /// True when every film of the file stands in the catalogue.
    bool agrees() const { return read == added; }
    /// The whole report in Czech, lines ended by a line feed.
    QString text() const;
};

/// Adds every film of the file `csv` to the catalogue in `folder`, all in one transaction, and writes the
/// report into the folder as `load.txt`. A film gets what the file leaves out or leaves blank: empty texts,
/// one disc, the language "neuvedeno", no pictures, its own key as catalogue number. A field `\N` is Null and
/// one in quotes is taken as it stands, the empty one too. A department that is not there by its name is
/// made; its name counts before `Oddel_ID`.
/// @param progress is called now and then with the number of films read so far.
/// @throws RuntimeError when lines are bad, with their numbers in the description, when a file cannot be read
/// or
///         written and when this process is asked to end. Nothing has been added then.
Report load(const QString& folder, const QString& csv, const std::function<void(qint64)>& progress);

}  // namespace filmLoader
