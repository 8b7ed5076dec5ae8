#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "datatool/OldFile.h"
#include "datatool/TableColumns.h"

/// Copies rows of a table of an old file into the table of the same name of a new one.
class RowWriter final {
 public:
    /// @throws RuntimeError when `rows` lacks a column of the new table.
    RowWriter(const sqlite::Database& database, const QString& table, const OldTable& rows);

    /// Writes the current row of `rows`.
    /// @return the reason in Czech if the row cannot be imported; nothing if it has been written.
    /// @throws RuntimeError when its key already exists or the file cannot be written.
    std::optional<QString> write(const OldTable& rows);

    /// How the user finds the row: by its key, or by its first values in a table without a key.
    QString nameOf(const OldTable& rows, qint64 number) const;
    /// A value of the row by the column name of the new table.
    std::optional<QByteArrayView> value(const OldTable& rows, QStringView column) const;
    /// The name of the key column; "" if the old table has none.
    QString key() const;
    /// Columns of the old table that the new one lacks.
    QStringList leftOut(const OldTable& rows) const;

 private:
    struct Column : TableColumn {
        qsizetype field;  // in the old table
    };

    std::optional<QString> bind(int parameter, const Column& column, QByteArrayView value) const;

    std::vector<Column> columns_;
    std::optional<sqlite::Statement> insert_;
};
