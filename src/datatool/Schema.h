#pragma once

#include <QByteArrayList>
#include <QStringList>
#include <vector>

#include "platform/sqlite.h"

/// Whether a file has the tables, columns and indexes that the program makes. More of them do no harm.
namespace schema {

/// The script that makes a file of a pair.
/// @param file its name.
QString scriptOf(const QString& file);

/// What a file lacks of the tables that a script creates.
struct Lacks {
    QStringList parts;  // for the user, such as "tabulka tZanr" or "sloupec tDVD.Rok"
    bool all = false;   // it has no table of them
};
/// @param script such as `catalogue.sql`.
Lacks lacks(const sqlite::Database& database, const QString& script);

/// An index that a script creates.
struct Index {
    QString name;
    QByteArray sql;  // makes it
};
/// The indexes that a file lacks. They only cost time; the tables must be there.
std::vector<Index> missingIndexes(const sqlite::Database& database, const QString& script);

}  // namespace schema
