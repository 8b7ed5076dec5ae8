#pragma once

#include <QStringList>
#include <vector>

#include "datatool/CsvReader.h"
#include "platform/sqlite.h"

/// A column of `tDVD`.
struct FilmColumn {
    /// What is special about its values.
    enum class Role { key, title, discs, language, department, cover, preview, other };

    QString name;
    Role role = Role::other;
    bool isNumber = false;
    int field = -1;        // in the table; -1 if missing
    QString heading = {};  // there
    bool isOwn = true;     // headed by its own name, so that its values are taken literally
};

/// A record of a table.
struct TableRecord {
    const QStringList& fields;
    const CsvReader& reader;

    /// True if the table says nothing here, so that the default applies.
    bool isBlank(int field, bool isNumber) const;
    bool isBlank(const FilmColumn& column) const { return isBlank(column.field, column.isNumber); }
    bool isNull(int field) const;
    /// True if the field is missing or holds blanks alone, quoted or not.
    bool isEmpty(int field) const;
};

/// Where the columns are in a table.
struct TableLayout {
    std::vector<FilmColumn> columns;
    // Fields; -1 if missing.
    int department = -1;
    int cover = -1;
    int preview = -1;
    QStringList unknown;   // headings; a column without one by its number from 1
    QString foreignTitle;  // heading "Title" that stands for the original title beside a Czech one

    /// Finds the columns by the table's first record.
    /// @throws BadLine when no heading stands for a title or a catalogue number, when two stand for the same
    ///         column, and for unknown ones.
    TableLayout(const sqlite::Database& database, const QStringList& header, qint64 line, bool ignoreUnknown);

    const FilmColumn& column(QStringView name) const;
    /// Whether the table names pictures, by their files or by their keys.
    bool hasPictures() const;
    /// Whether the program knows no column in which the record holds anything.
    bool isEmpty(const TableRecord& record) const;

 private:
    QString targetOf(const QString& heading) const;
    int foreignTitleField(const QStringList& header) const;
    void place(const QStringList& header, int field, const QString& target, qint64 line);
    void refuseUnknown(const QStringList& header, qint64 line) const;
};
