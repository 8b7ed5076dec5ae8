#pragma once

#include <QString>
#include <QStringList>
#include <functional>

/// Loads films from CSV. The first line names columns of `tDVD`, in any case and order, and `Oddeleni` for
/// the name of the department. CsvText tells which files can be read.
namespace filmLoader {

/// The outcome of loading a file.
struct Report {
    QString csv;
    QString folder;
    QString encoding;
    QChar separator;
    qint64 read = 0;          // films in the file
    qint64 added = 0;         // increase of the number of films in the catalogue
    QStringList departments;  // names of those created

    /// True if every film of the file has been added.
    bool agrees() const { return read == added; }
    /// The whole report in Czech, lines ended by a line feed.
    QString text() const;
};

/// Adds all films of the file `csv` to the catalogue in `folder` in one transaction and writes the report
/// into the folder as `load.txt`. Missing or blank fields get defaults: empty texts, one disc, the language
/// "neuvedeno", no pictures, the key as catalogue number. A field `\N` is Null; a quoted field is taken
/// literally, even if empty. A department of an unknown name is created; its name takes precedence over
/// `Oddel_ID`.
/// @param progress called from time to time with the number of films read so far.
/// @throws RuntimeError for bad lines, with their numbers in the description, when a file cannot be read or
///         written and when this process is asked to end. Nothing has been added then.
Report load(const QString& folder, const QString& csv, const std::function<void(qint64)>& progress);

}  // namespace filmLoader
