#include "datatool/TableColumns.h"

std::vector<TableColumn> columnsOf(const sqlite::Database& database, const QString& table) {
    std::vector<TableColumn> columns;
    const sqlite::Statement info(database, "SELECT name, type, pk FROM pragma_table_info(?)");
    info.bind(1, table);
    while (info.step())
        columns.push_back({info.text(0), ado::kindOf(info.text(1).toUtf8()), info.number(2) != 0});
    return columns;
}
