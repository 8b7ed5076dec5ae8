#pragma once

#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "platform/QueryShape.h"
#include "platform/errors.h"
#include "platform/sqlite.h"

namespace ado {

/// The keys of one row, one for each table of its query.
using RowKeys = std::vector<qint64>;

/// Which rows a recordset has and where in them it stands.
///
/// Rows are met by stepping through the query once, so that a walk over a large table costs little more than
/// the bare query, and adding to a large table does not read it. As long as that statement runs it holds the
/// file's shared lock, which keeps other programs from changing anything under it. Before this program
/// changes something itself the statement has to be ended: by `complete`, or by `pause` where the rest does
/// not matter.
class Keyset final {
 public:
    /// Stands on the first row, or at the end.
    Keyset(const sqlite::Database& database, const QueryShape& shape);

    bool atEnd() const noexcept { return position_ >= count_; }
    /// Moves to the next row; must not be at the end. After a failure it stands where it stood, and fails
    /// again.
    void next();
    /// The keys of the current row.
    RowKeys keys() const;
    /// The running query on the current row, its values behind the keys; null when they have to be read by
    /// key.
    const sqlite::Statement* row() const noexcept { return walk_.get(); }

    /// Reads all keys that are not known yet, so that the rows are fixed from now on, and ends the query.
    void complete();
    /// Ends the query without reading on. What is not known yet is read when it is asked for.
    void pause() noexcept { walk_.reset(); }
    /// A row that was added through the recordset is none of those still to be met.
    void added(qint64 key);

    /// Number of rows.
    std::size_t count();

 private:
    void meet(const sqlite::Statement& statement);

    const sqlite::Database& database_;
    const QueryShape& shape_;
    std::unique_ptr<sqlite::Statement> walk_;
    bool unread_ = true;        // there may be rows whose keys are not known yet
    std::vector<qint64> keys_;  // of the rows met, flat
    std::size_t position_ = 0;
    std::size_t count_ = 0;  // of the rows met
    std::set<RowKeys> added_;
    std::optional<RuntimeError> failure_;
};

}  // namespace ado
