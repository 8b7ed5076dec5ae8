#pragma once

#include <QByteArray>
#include <vector>

#include "platform/sqlite.h"

/// The pages that hold a table's rows, found without the tree that leads to them. All of it follows the file
/// format of SQLite 3, "B-tree Pages", "Record Format" and "The Freelist".
namespace leafPages {

struct Leaf {
    quint32 page = 0;     // counts from 1
    qint64 firstKey = 0;  // of its rows
};

/// The leaf pages in use, in the order of the file, of a table with a whole-number primary key, which is its
/// first column. Tables of one file are told apart by their number of columns.
/// @param step is told from time to time how many pages are looked at, and of how many.
std::vector<Leaf> of(const sqlite::Database& database, qsizetype columns,
                     const std::function<void(qint64 done, qint64 all)>& step);

/// Makes a leaf page the whole table to this connection, so that the engine reads its rows alone.
/// @param copy private copy of the file, which is spoilt by that.
/// @throws RuntimeError when the schema cannot be changed.
void showAlone(const sqlite::Database& copy, const QString& table, quint32 page);

}  // namespace leafPages
