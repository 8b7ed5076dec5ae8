#pragma once

#include <QByteArray>
#include <vector>

#include "platform/sqlite.h"

/// The pages that hold a table's rows, found without the tree that leads to them. All of it follows the file
/// format of SQLite 3, "B-tree Pages", "Record Format" and "The Freelist".
namespace leafPages {

/// The leaf pages in use, counted from 1 and in the order of the file, of a table with a whole-number primary
/// key, which is its first column. Tables of one file are told apart by their number of columns.
/// @param step is told from time to time how many pages are looked at, and of how many.
std::vector<quint32> of(const sqlite::Database& database, qsizetype columns,
                        const std::function<void(qint64 done, qint64 all)>& step);

/// Takes those rows out of leaf pages that cannot be the table's, as their number of columns is another one.
/// @param path private copy of the file, which no connection has open.
/// @throws RuntimeError when it cannot be written.
void leaveOutUnfit(const QString& path, const std::vector<quint32>& leaves, qsizetype columns);

/// Takes one row out of a leaf page that cannot be read, so that the engine reads those behind it.
/// @param path as above.
/// @param row counts from 0.
/// @return false when there is no such row or the file cannot be written.
bool leaveOut(const QString& path, quint32 leaf, int row);

/// Makes a leaf page the whole table to this connection, so that the engine reads its rows alone.
/// @param copy private copy of the file, which is spoilt by that.
/// @throws RuntimeError when the schema cannot be changed.
void showAlone(const sqlite::Database& copy, const QString& table, quint32 page);

}  // namespace leafPages
