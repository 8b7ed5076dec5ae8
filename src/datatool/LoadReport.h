#pragma once

#include <QString>
#include <QStringList>

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
    qint64 skipped = 0;            // known films that were to be left out
    qint64 pictures = 0;           // stored
    QStringList known = {};        // one line for each film that was there already, with the reason
    QStringList departments = {};  // names of those created
    QStringList genres = {};       // beside the dictionary
    QStringList ignored = {};      // headings

    /// True if every film of the table has been added or was to be left out.
    bool agrees() const { return read == added + skipped; }
    /// The outcome in one Czech sentence.
    QString verdict() const;
    /// The whole report in Czech, lines ended by a line feed.
    QString text() const;
};
