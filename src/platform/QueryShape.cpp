#include "platform/QueryShape.h"

#include <algorithm>

#include "platform/errors.h"
#include "platform/index.h"

namespace {

using namespace ado;

QByteArray keyOf(const sqlite::Database& database, const QByteArray& table) {
    const sqlite::Statement info(
        database, "SELECT name FROM pragma_table_info(?1) WHERE pk=1 AND type='INTEGER' COLLATE NOCASE");
    info.bind(1, QString::fromUtf8(table));
    if (!info.step()) throw RuntimeError(errors::databaseSql);
    return info.text(0).toUtf8();
}

int tableIndex(QueryShape& shape, const sqlite::Database& database, const QByteArray& name) {
    const auto found = std::find_if(shape.tables.begin(), shape.tables.end(),
                                    [&](const Table& table) { return table.name == name; });
    if (found != shape.tables.end()) return static_cast<int>(found - shape.tables.begin());
    shape.tables.push_back({name, keyOf(database, name), {}, {}});
    return countOf(shape.tables) - 1;
}

int placeInTable(Table& table, const QByteArray& column, ColumnKind kind) {
    const auto found = std::find(table.columns.begin(), table.columns.end(), column);
    if (found != table.columns.end()) return static_cast<int>(found - table.columns.begin());
    table.columns.push_back(column);
    table.kinds.push_back(kind);
    return countOf(table.columns) - 1;
}

bool isWordCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

/// Positions in the outermost SELECT.
struct Outer {
    qsizetype list;  ///< after SELECT
    qsizetype from;  ///< at FROM
};

Outer outerWords(const QByteArray& sql) {
    int depth = 0;
    qsizetype list = -1;
    for (qsizetype at = 0; at < sql.size(); ++at) {
        const char c = sql[at];
        if (c == '(') ++depth;
        if (c == ')') --depth;
        if (c == '\'' || c == '"') {
            at = sql.indexOf(c, at + 1);
            if (at < 0) break;
        }
        if (depth != 0 || !isWordCharacter(c)) continue;
        const qsizetype begin = at;
        while (at + 1 < sql.size() && isWordCharacter(sql[at + 1]))
            ++at;
        const QByteArray word = sql.sliced(begin, at + 1 - begin).toLower();
        if (list < 0 && word != "select") break;
        if (list < 0) list = at + 1;
        if (word == "from") return {list, begin};
    }
    throw RuntimeError(errors::databaseSql);
}

}  // namespace

ado::ColumnKind ado::kindOf(QByteArrayView declaredType) {
    const QByteArray type = declaredType.toByteArray().toUpper();
    if (type.contains("INT")) return ColumnKind::number;
    if (type.contains("DATE")) return ColumnKind::date;
    if (type.contains("BLOB")) return ColumnKind::bytes;
    return ColumnKind::text;
}

QByteArray ado::quoted(const QByteArray& name) {
    return '"' + QByteArray(name).replace('"', "\"\"") + '"';
}

QByteArray ado::insertSql(const QByteArray& table, const QByteArrayList& columns) {
    QByteArray names;
    QByteArray parameters;
    for (const QByteArray& column : columns) {
        names += (names.isEmpty() ? "" : ",") + quoted(column);
        parameters += parameters.isEmpty() ? "?" : ",?";
    }
    const QByteArray values =
        columns.isEmpty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + parameters + ')';
    return "INSERT INTO " + quoted(table) + values;
}

QueryShape ado::QueryShape::of(const sqlite::Database& database, const QString& sql) {
    const QByteArray text = sql.toUtf8();
    const sqlite::Statement statement(database, text);
    QueryShape shape;
    const int count = sqlite3_column_count(statement.handle());
    for (int at = 0; at < count; ++at) {
        const char* table = sqlite3_column_table_name(statement.handle(), at);
        const char* origin = sqlite3_column_origin_name(statement.handle(), at);
        if (table == nullptr || origin == nullptr) throw RuntimeError(errors::databaseSql);
        const ColumnKind kind = kindOf(sqlite3_column_decltype(statement.handle(), at));
        const int index = tableIndex(shape, database, table);
        const int place = placeInTable(elementAt(shape.tables, index), origin, kind);
        shape.columns.push_back(
            {QString::fromUtf8(sqlite3_column_name(statement.handle(), at)), index, kind, place});
    }
    if (shape.tables.empty()) throw RuntimeError(errors::databaseSql);

    QByteArray keys;
    for (const Table& table : shape.tables) {
        keys += (keys.isEmpty() ? "" : ",") + quoted(table.name) + '.' + quoted(table.key);
    }
    const Outer outer = outerWords(text);
    shape.keysSql = "SELECT " + keys + ' ' + text.sliced(outer.from);
    shape.walkSql = "SELECT " + keys + ',' + text.sliced(outer.list);
    return shape;
}
