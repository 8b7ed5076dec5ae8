#pragma once

#include <QString>
#include <vector>

#include "platform/QueryShape.h"

/// A column as its table declares it.
struct TableColumn {
    QString name;
    ado::ColumnKind kind;
    bool isKey;  // part of the primary key
};

/// The columns of a table in their order; none when there is no such table.
std::vector<TableColumn> columnsOf(const sqlite::Database& database, const QString& table);
