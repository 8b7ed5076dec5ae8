#pragma once

#include <QString>
#include <vector>

#include "platform/sqlite.h"

/// The keys that new rows get. They count on from the highest ever given, so that no new film inherits the
/// loans and pictures of a deleted one.
namespace sequences {

/// A table whose next key would be a wrong one.
struct Wrong {
    QString table;
    QByteArray schema;  // SQL name of the file
    qint64 last;        // the key that counts as the last one given
    QString fault;      // in Czech
};

/// @param catalogue connection that reads the pictures as schema `pictures`.
/// @param only the table to look at; "" for all.
std::vector<Wrong> wrong(const sqlite::Database& catalogue, const QString& only = {});

/// Lets the table count on from `last`.
void mend(const sqlite::Database& catalogue, const Wrong& wrong);

}  // namespace sequences
