#include "platform/Keyset.h"

#include <algorithm>

#include "platform/index.h"

using namespace ado;

Keyset::Keyset(const sqlite::Database& database, const QueryShape& shape)
    : database_(database), shape_(shape) {
    // Stepping would load binary values, so rows that have any are read by key, without them.
    const bool bytes = std::any_of(shape.columns.begin(), shape.columns.end(),
                                   [](const Column& column) { return column.kind == ColumnKind::bytes; });
    if (bytes) {
        complete();
        return;
    }
    walk_ = std::make_unique<sqlite::Statement>(database, shape.walkSql);
    unread_ = walk_->step();
    if (unread_) {
        meet(*walk_);
    } else {
        walk_.reset();
    }
}

void Keyset::meet(const sqlite::Statement& statement) {
    for (int table = 0; table < countOf(shape_.tables); ++table) {
        keys_.push_back(statement.number(table));
    }
    ++count_;
}

void Keyset::next() {
    if (failure_) throw RuntimeError(*failure_);
    if (position_ + 1 == count_ && unread_) {
        if (walk_ == nullptr) {
            complete();
        } else {
            try {
                unread_ = walk_->step();
            } catch (const RuntimeError& failure) {
                // A failed statement would start again from the first row.
                failure_ = failure;
                walk_.reset();
                throw;
            }
            if (unread_) {
                meet(*walk_);
            } else {
                walk_.reset();
            }
        }
    }
    ++position_;
}

RowKeys Keyset::keys() const {
    const auto width = static_cast<std::ptrdiff_t>(shape_.tables.size());
    const auto first = keys_.begin() + static_cast<std::ptrdiff_t>(position_) * width;
    return {first, first + width};
}

void Keyset::complete() {
    if (failure_) throw RuntimeError(*failure_);
    if (unread_) {
        // Rows found so far keep their positions; all others follow them.
        const auto width = static_cast<std::ptrdiff_t>(shape_.tables.size());
        std::set<RowKeys> known = added_;
        for (auto at = keys_.begin(); at != keys_.end(); at += width)
            known.insert(RowKeys(at, at + width));
        const sqlite::Statement statement(database_, shape_.keysSql);
        while (statement.step()) {
            meet(statement);
            if (known.empty() || !known.contains(RowKeys(keys_.end() - width, keys_.end()))) continue;
            keys_.resize(keys_.size() - toSize(width));
            --count_;
        }
        unread_ = false;
    }
    walk_.reset();
}

void Keyset::added(qint64 key) {
    if (unread_) added_.insert({key});
}

std::size_t Keyset::count() {
    complete();
    return count_;
}
