#include "datatool/Departments.h"

#include "datatool/DataFiles.h"

using namespace Qt::StringLiterals;

namespace {

void bindName(const sqlite::Statement& statement, int parameter, const QString& name) {
    name.isNull() ? statement.bindNull(parameter) : statement.bind(parameter, name);
}

}  // namespace

Departments::Departments(const sqlite::Database& database)
    : find_(database,
            "SELECT ODID FROM tOddeleni WHERE OdJm IS ?1 "
            "ORDER BY ODID IS NOT ?2, OdJm COLLATE BINARY IS NOT ?1, ODID LIMIT 1"),
      taken_(database, "SELECT 1 FROM tOddeleni WHERE ODID=?"),
      insert_(database, "INSERT INTO tOddeleni (ODID, OdJm) VALUES (?,?) RETURNING ODID") {}

qint64 Departments::keyOf(const QString& name, std::optional<qint64> wish) {
    bindName(find_, 1, name);
    wish ? find_.bind(2, *wish) : find_.bindNull(2);
    const bool found = find_.step();
    const qint64 key = found ? find_.number(0) : 0;
    find_.reset();
    return found ? key : make(name, wish);
}

qint64 Departments::make(const QString& name, std::optional<qint64> wish) {
    bool free = wish && *wish > 0 && *wish <= dataFiles::highestKey;
    if (free) {
        taken_.bind(1, *wish);
        free = !taken_.step();
        taken_.reset();
    }
    free ? insert_.bind(1, *wish) : insert_.bindNull(1);
    bindName(insert_, 2, name);
    insert_.step();
    const qint64 key = insert_.number(0);
    insert_.reset();
    made_ += name.isEmpty() ? u"(bez názvu)"_s : name;
    return key;
}
