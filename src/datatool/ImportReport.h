#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

/// The outcome for one table.
struct TableReport {
    QString title;       // in Czech
    QString name;        // in the data file
    qint64 counted = 0;  // rows according to the old file itself
    qint64 read = 0;     // rows exported from it
    qint64 written = 0;  // rows in the new file
    qint64 refused = 0;
    qint64 nextKey = 0;  // key of the next new row; 0 for a table without keys
};

/// The outcome for an old pair.
struct ImportReport {
    QString oldFolder;
    QString newFolder;
    QDateTime finished;
    std::vector<TableReport> tables;
    QStringList refused;  // one line for each row, with the reason
    QStringList notes;    // what was imported but is worth knowing

    /// True if every row of the old pair is in the new one.
    bool agrees() const;
    /// The outcome in one Czech sentence.
    QString verdict() const;
    /// The whole report in Czech, lines ended by a line feed.
    QString text() const;
};
