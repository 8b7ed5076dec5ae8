#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "datatool/OldFile.h"
#include "datatool/TableColumns.h"

/// Puts rows of one table of an old file into the table of the same name of a new one.
class RowWriter final {
 public:
    /// @throws RuntimeError when `rows` lacks a column that the new table has.
    RowWriter(const sqlite::Database& database, const QString& table, const OldTable& rows);

    /// Writes the row on which `rows` stands.
    /// @return the reason in Czech when the row cannot be taken over; nothing when it has been written.
    /// @throws RuntimeError when its key is there already or the file cannot be written.
    std::optional<QString> write(const OldTable& rows);

    /// What the user finds the row by: its key, or its first values where the table has no key.
    QString nameOf(const OldTable& rows, qint64 number) const;
    /// A value of the row by the name of its column in the new table.
    std::optional<QByteArrayView> value(const OldTable& rows, QStringView column) const;
    /// The name of the key column; "" where the old table has none.
    QString key() const;
    /// Columns of the old table that the new one does not have.
    QStringList leftOut(const OldTable& rows) const;

 private:
    struct Column : TableColumn {
        qsizetype field;  // in the old table
    };

    std::optional<QString> bind(int parameter, const Column& column, QByteArrayView value) const;

    std::vector<Column> columns_;
    std::optional<sqlite::Statement> insert_;
};
