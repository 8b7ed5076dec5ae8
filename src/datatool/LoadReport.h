#pragma once

#include <QString>
#include <QStringList>
#include <limits>

/// The outcome of loading a table of films.
struct LoadReport {
    QString csv;
    QString folder;
    QString encoding;
    QChar separator;
    bool isDryRun = false;
    bool areGenresAdded = false;
    qint64 read = 0;               // films in the table
    qint64 added = 0;              // increase of the number of films in the catalogue
    qint64 skipped = 0;            // films known or repeated that were to be left out
    qint64 pictures = 0;           // stored
    qint64 unlinked = 0;           // keys of pictures that are not in the pair
    qint64 unlisted = 0;           // films that no list shows, or at which lists stop
    QString foreignTitle = {};     // heading that was taken for the original title
    QStringList empty = {};        // lines where no known column holds anything, which make no film
    QStringList untitled = {};     // lines of films without a title
    QStringList known = {};        // one line for each film that was there already, with the reason
    QStringList repeated = {};     // the same for each that the table holds on a line before
    QStringList departments = {};  // names of those created
    QStringList genres = {};       // beside the dictionary
    QStringList ignored = {};      // headings

    /// True if every film of the table has been added, was to be left out or is none.
    bool agrees() const { return read == added + skipped + empty.size(); }
    /// The outcome in one Czech sentence.
    QString verdict() const;
    /// The whole report in Czech, lines ended by a line feed.
    /// @param most lines of a listing that are shown; the rest is counted.
    QString text(qsizetype most = std::numeric_limits<qsizetype>::max()) const;
};
