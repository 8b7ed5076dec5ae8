#include "platform/Keyset.h"

#include <algorithm>

using namespace ado;

Keyset::Keyset(const sqlite::Database& database, const QueryShape& shape)
    : database_(database), shape_(shape) {
    // Stepping would read binary values whole, so rows that have any are read by key, without them.
    const bool bytes = std::any_of(shape.columns.begin(), shape.columns.end(),
                                   [](const Column& column) { return column.kind == ColumnKind::bytes; });
    if (bytes) {
        readAll(database);
    } else {
        walk_ = std::make_unique<sqlite::Statement>(database, shape.walkSql);
        if (!readNext(*walk_)) walk_.reset();
    }
}

bool Keyset::readNext(const sqlite::Statement& statement) {
    const int width = static_cast<int>(shape_.tables.size());
    for (;;) {
        if (!statement.step()) return false;
        for (int table = 0; table < width; ++table)
            keys_.push_back(statement.number(table));
        if (changed_.empty() || !changed_.contains(RowKeys(keys_.end() - width, keys_.end()))) break;
        keys_.resize(keys_.size() - static_cast<std::size_t>(width));
    }
    ++count_;
    return true;
}

void Keyset::readAll(const sqlite::Database& database) {
    const sqlite::Statement statement(database, shape_.keysSql);
    while (readNext(statement)) {
    }
}

void Keyset::next() {
    ++position_;
    if (position_ == count_ && walk_ != nullptr && !readNext(*walk_)) walk_.reset();
}

RowKeys Keyset::keys() const {
    const auto width = static_cast<std::ptrdiff_t>(shape_.tables.size());
    const auto first = keys_.begin() + static_cast<std::ptrdiff_t>(position_) * width;
    return {first, first + width};
}

std::size_t Keyset::count() {
    if (walk_ != nullptr) {
        // The rows met so far keep their places; whatever else the query gives now follows them.
        const auto width = static_cast<std::ptrdiff_t>(shape_.tables.size());
        std::set<RowKeys> notAgain = changed_;
        for (auto at = keys_.begin(); at != keys_.end(); at += width)
            notAgain.insert(RowKeys(at, at + width));
        std::swap(changed_, notAgain);
        readAll(database_);
        std::swap(changed_, notAgain);
        walk_.reset();
    }
    return count_;
}
