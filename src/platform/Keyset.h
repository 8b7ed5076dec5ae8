#pragma once

#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "platform/QueryShape.h"
#include "platform/errors.h"
#include "platform/sqlite.h"

namespace ado {

/// The keys of one row, one for each table of the query.
using RowKeys = std::vector<qint64>;

/// The rows of a recordset and the position in them.
///
/// Rows are found by stepping through the query once, so that a walk over a large table costs little more
/// than the bare query, and adding to a large table does not read it. While that statement runs it holds the
/// file's shared lock, which keeps other programs from changing anything. Before this program writes, the
/// statement must be ended: by `complete`, or by `pause` where the rest does not matter.
class Keyset final {
 public:
    /// Positioned on the first row, or at the end.
    Keyset(const sqlite::Database& database, const QueryShape& shape);

    bool atEnd() const noexcept { return position_ >= count_; }
    /// Moves to the next row; must not be at the end. After a failure the position is unchanged, and every
    /// further call fails again.
    void next();
    /// The keys of the current row.
    RowKeys keys() const;
    /// The running query on the current row, its values after the keys; null if they must be read by key.
    const sqlite::Statement* row() const noexcept { return walk_.get(); }

    /// Reads all remaining keys, so that the rows are fixed from now on, and ends the query.
    void complete();
    /// Ends the query without reading on. Remaining keys are read on demand.
    void pause() noexcept { walk_.reset(); }
    /// A row added through the recordset, not to be found again by the query.
    void added(qint64 key);

    /// Number of rows.
    std::size_t count();

 private:
    void meet(const sqlite::Statement& statement);

    const sqlite::Database& database_;
    const QueryShape& shape_;
    std::unique_ptr<sqlite::Statement> walk_;
    bool unread_ = true;        // there may be more rows
    std::vector<qint64> keys_;  // of the rows found, flat
    std::size_t position_ = 0;
    std::size_t count_ = 0;  // of the rows found
    std::set<RowKeys> added_;
    std::optional<RuntimeError> failure_;
};

}  // namespace ado
