#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <vector>

#include "platform/sqlite.h"

namespace ado {

/// What a column can hold, by its declared type.
enum class ColumnKind { text, number, date, bytes };

/// The kind of a column by its declared type.
ColumnKind kindOf(QByteArrayView declaredType);

/// A column of a select list and its origin.
struct Column {
    QString name;  ///< without the table
    int table;     ///< index into QueryShape::tables
    ColumnKind kind;
    int placeInTable;  ///< index into Table::columns
};

/// A table that occurs in a select list.
struct Table {
    QByteArray name;
    QByteArray key;                   ///< its INTEGER PRIMARY KEY
    std::vector<QByteArray> columns;  ///< those in the select list, without duplicates
    std::vector<ColumnKind> kinds;    ///< of these columns
};

/// What a recordset needs to know about its SELECT to read and change single rows: the columns, their tables,
/// and two variants of the SELECT that give the same rows in the same order.
struct QueryShape {
    std::vector<Column> columns;
    std::vector<Table> tables;
    QByteArray keysSql;  ///< the tables' keys only, one column for each table
    QByteArray walkSql;  ///< the same keys, then all columns

    /// @throws RuntimeError when the text does not compile, is no SELECT, has a column without a table, or
    ///         uses a table without an INTEGER PRIMARY KEY.
    static QueryShape of(const sqlite::Database& database, const QString& sql);
};

/// `name` quoted as an SQL identifier.
QByteArray quoted(const QByteArray& name);

/// An INSERT with one parameter for each column; without columns one that inserts a row of defaults.
QByteArray insertSql(const QByteArray& table, const QByteArrayList& columns);

}  // namespace ado
