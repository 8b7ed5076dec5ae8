#pragma once

#include <memory>
#include <set>
#include <vector>

#include "platform/QueryShape.h"
#include "platform/sqlite.h"

namespace ado {

/// The keys of one row, one for each table of its query.
using RowKeys = std::vector<qint64>;

/// Which rows a recordset has and where in them it stands.
///
/// Rows are met by stepping through the query once, so that a walk over a large table costs little more than
/// the bare query, and adding to a large table does not read it. As long as that statement runs it holds the
/// file's shared lock, which keeps other programs from changing anything under it; what is changed through
/// the recordset itself has to be told to `changed`. Counting in the middle reads the remaining keys at once.
class Keyset final {
 public:
    /// Stands on the first row, or at the end.
    Keyset(const sqlite::Database& database, const QueryShape& shape);

    bool atEnd() const noexcept { return position_ >= count_; }
    /// Moves to the next row; must not be at the end.
    void next();
    /// The keys of the current row.
    RowKeys keys() const;
    /// The running query on the current row, its values behind the keys; null when they have to be read by
    /// key.
    const sqlite::Statement* row() const noexcept { return walk_.get(); }
    /// Number of rows.
    std::size_t count();

    /// A row that was added or changed through the recordset. The running query must not meet it again.
    void changed(const RowKeys& keys) { changed_.insert(keys); }

 private:
    void readAll(const sqlite::Database& database);
    bool readNext(const sqlite::Statement& statement);

    const sqlite::Database& database_;
    const QueryShape& shape_;
    std::unique_ptr<sqlite::Statement> walk_;  // gone once every key is known
    std::vector<qint64> keys_;                 // of the rows met, flat
    std::size_t position_ = 0;
    std::size_t count_ = 0;  // of the rows met
    std::set<RowKeys> changed_;
};

}  // namespace ado
