#include "datatool/Schema.h"

#include "datatool/DataFiles.h"

using namespace Qt::StringLiterals;

namespace {

sqlite::Database asMade(const QString& script) {
    sqlite::Database made;
    made.exec(dataFiles::script(script).constData());
    return made;
}

/// Names in lower case, as the engine does not tell them apart by case.
QStringList namesOf(const sqlite::Database& database, const char* sql, const QString& of) {
    const sqlite::Statement rows(database, sql);
    rows.bind(1, of);
    QStringList names;
    while (rows.step())
        names += rows.text(0).toLower();
    return names;
}

}  // namespace

QString schema::scriptOf(const QString& file) {
    return file == u"data.ddb" ? u"catalogue.sql"_s : u"pictures.sql"_s;
}

schema::Lacks schema::lacks(const sqlite::Database& database, const QString& script) {
    const sqlite::Database made = asMade(script);
    const sqlite::Statement tables(
        made, "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite%' ORDER BY rowid");
    const QStringList found = namesOf(database, "SELECT name FROM sqlite_schema WHERE type=?", u"table"_s);
    Lacks lacks{{}, true};
    while (tables.step()) {
        const QString table = tables.text(0);
        if (!found.contains(table.toLower())) {
            lacks.parts += u"tabulka "_s + table;
            continue;
        }
        lacks.all = false;
        const QStringList present = namesOf(database, "SELECT name FROM pragma_table_info(?)", table);
        const sqlite::Statement columns(made, "SELECT name FROM pragma_table_info(?)");
        columns.bind(1, table);
        while (columns.step()) {
            if (!present.contains(columns.text(0).toLower()))
                lacks.parts += u"sloupec %1.%2"_s.arg(table, columns.text(0));
        }
    }
    return lacks;
}

std::vector<schema::Index> schema::missingIndexes(const sqlite::Database& database, const QString& script) {
    const sqlite::Database made = asMade(script);
    const QStringList found = namesOf(database, "SELECT name FROM sqlite_schema WHERE type=?", u"index"_s);
    const sqlite::Statement indexes(
        made, "SELECT name, sql FROM sqlite_schema WHERE type='index' AND sql IS NOT NULL ORDER BY rowid");
    std::vector<Index> missing;
    while (indexes.step()) {
        if (!found.contains(indexes.text(0).toLower()))
            missing.push_back({indexes.text(0), indexes.text(1).toUtf8()});
    }
    return missing;
}
