#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

/// What became of one table.
struct TableReport {
    QString title;       // Czech, for the reader
    QString name;        // in the data file
    qint64 counted = 0;  // rows that the old file itself tells
    qint64 read = 0;     // rows that its export gave
    qint64 written = 0;  // rows that the new file holds
    qint64 refused = 0;
    qint64 nextKey = 0;  // number that the next new row will get; 0 for a table without such numbers
};

/// What became of an old pair.
struct ImportReport {
    QString oldFolder;
    QString newFolder;
    QDateTime finished;
    std::vector<TableReport> tables;
    QStringList refused;  // one line for each refused row, with its reason
    QStringList notes;    // what came over and is worth knowing all the same

    /// True when every row that the old pair tells stands in the new one.
    bool agrees() const;
    /// One plain sentence about the outcome.
    QString verdict() const;
    /// The whole report in Czech, lines ended by a line feed.
    QString text() const;
};
