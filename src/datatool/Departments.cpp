#include "datatool/Departments.h"

#include "datatool/DataFiles.h"

Departments::Departments(const sqlite::Database& database)
    : find_(database,
            "SELECT ODID FROM tOddeleni WHERE OdJm=?1 "
            "ORDER BY ODID IS NOT ?2, OdJm COLLATE BINARY<>?1, ODID LIMIT 1"),
      taken_(database, "SELECT 1 FROM tOddeleni WHERE ODID=?"),
      insert_(database, "INSERT INTO tOddeleni (ODID, OdJm) VALUES (?,?) RETURNING ODID") {}

qint64 Departments::keyOf(const QString& name, std::optional<qint64> wish) {
    find_.bind(1, name);
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
    insert_.bind(2, name);
    insert_.step();
    const qint64 key = insert_.number(0);
    insert_.reset();
    made_ += name;
    return key;
}
