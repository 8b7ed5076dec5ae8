#include "datatool/Integrity.h"

#include <QFileInfo>
#include <QHashFunctions>
#include <algorithm>
#include <vector>

#include "datatool/PageWatch.h"
#include "platform/collation.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 rowsPerCheck = 10000;
constexpr qint64 sharesPerIndex = 1000;

struct Index {
    QString name;
    QByteArray table;
    QByteArray condition;  // " WHERE …" of a partial one
    QByteArrayList columns;
};

QByteArray quoted(const QString& name) {
    return '"' + name.toUtf8().replace('"', "\"\"") + '"';
}

std::vector<Index> indexesOf(const sqlite::Database& database) {
    std::vector<Index> indexes;
    const sqlite::Statement rows(database,
                                 "SELECT name, tbl_name, sql FROM sqlite_schema "
                                 "WHERE type='index' AND sql IS NOT NULL ORDER BY rootpage");
    const sqlite::Statement columns(database, "SELECT name FROM pragma_index_info(?) ORDER BY seqno");
    while (rows.step()) {
        const QByteArray sql = rows.text(2).toUtf8();
        const qsizetype condition = sql.indexOf(" WHERE ");
        Index index{
            rows.text(0), quoted(rows.text(1)), condition < 0 ? QByteArray() : sql.mid(condition), {}};
        columns.bind(1, rows.text(0));
        bool ofColumns = true;
        while (columns.step()) {
            ofColumns = ofColumns && !columns.isNull(0);
            index.columns += quoted(columns.text(0));
        }
        columns.reset();
        // One over expressions is none of ours.
        if (ofColumns) indexes.push_back(std::move(index));
    }
    return indexes;
}

/// A value in the engine's order: Null, numbers, texts, bytes.
struct Value {
    int rank = 0;
    double number = 0;
    QString text;
};

Value valueOf(const sqlite::Statement& rows, int column) {
    switch (sqlite3_column_type(rows.handle(), column)) {
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return {1, sqlite3_column_double(rows.handle(), column), {}};
        case SQLITE_TEXT:
            return {2, 0, rows.text(column)};
        case SQLITE_BLOB:
            return {3, 0, {}};
        default:
            return {};
    }
}

int compare(const Value& left, const Value& right) {
    if (left.rank != right.rank) return left.rank - right.rank;
    if (left.number != right.number) return left.number < right.number ? -1 : 1;
    return left.text == right.text ? 0 : collation::compare(left.text, right.text);
}

/// Reads rows of an index's columns, followed by the key.
class Rows final {
 public:
    /// @param step is called from time to time.
    Rows(const sqlite::Database& database, const QByteArray& sql, qsizetype columns,
         std::function<void(qint64 rows)> step)
        : rows_(database, sql), columns_(static_cast<int>(columns)), step_(std::move(step)) {}

    bool step() {
        if (count_ % rowsPerCheck == 0) step_(count_);
        if (!rows_.step()) return false;
        ++count_;
        size_t row = 0;
        for (int column = 0; column <= columns_; ++column) {
            const void* bytes = sqlite3_column_blob(rows_.handle(), column);
            const auto length = static_cast<size_t>(sqlite3_column_bytes(rows_.handle(), column));
            row = qHashBits(bytes, length, row * 31 + length);
        }
        sum_ += row;
        return true;
    }
    /// False when the row stands before the one that was asked for last.
    bool isInOrder() {
        values_.clear();
        for (int column = 0; column <= columns_; ++column)
            values_.push_back(valueOf(rows_, column));
        int order = -1;
        for (size_t column = 0; column < former_.size(); ++column) {
            order = compare(former_[column], values_[column]);
            if (order != 0) break;
        }
        std::swap(former_, values_);
        return order < 0;
    }
    /// Whether both read the same rows, in whatever order.
    bool agrees(const Rows& other) const { return count_ == other.count_ && sum_ == other.sum_; }

 private:
    sqlite::Statement rows_;
    int columns_;
    std::function<void(qint64)> step_;
    qint64 count_ = 0;
    size_t sum_ = 0;
    std::vector<Value> former_;
    std::vector<Value> values_;
};

bool isRight(const sqlite::Database& database, const Index& index, const integrity::Step& step) {
    const qint64 all = 2 * database.number(("SELECT IFNULL(max(rowid), 0) FROM " + index.table).constData());
    const QByteArray columns = index.columns.join(',') + ",rowid";
    const QByteArray select = "SELECT " + columns + " FROM " + index.table;
    Rows indexed(database,
                 select + " INDEXED BY " + quoted(index.name) + index.condition + " ORDER BY " + columns,
                 index.columns.size(), [&](qint64 rows) { step(rows, all); });
    try {
        while (indexed.step()) {
            if (!indexed.isInOrder()) return false;
        }
    } catch (const sqlite::Failure& failure) {
        // Only pages of the index are read here.
        if ((failure.resultCode() & 0xFF) != SQLITE_CORRUPT) throw;
        return false;
    }
    Rows stored(database, select + " NOT INDEXED" + index.condition, index.columns.size(),
                [&](qint64 rows) { step(all / 2 + rows, all); });
    while (stored.step()) {
    }
    return indexed.agrees(stored);
}

}  // namespace

qsizetype integrity::damage(const sqlite::Database& database, const Step& step) {
    qsizetype faults = 0;
    // In kB. Rows are read again for each index, with the usual 2 MB from the file each time.
    database.exec("PRAGMA cache_size=-32768");
    // All pages of the file, and those of the rows once more.
    const qint64 pages = database.number("PRAGMA page_count");
    const qint64 all = 2 * pages;
    // A last page of which the end is missing is read as if zeros stood there.
    const QFileInfo file(QString::fromUtf8(sqlite3_db_filename(database.handle(), "main")));
    if (file.size() < pages * database.number("PRAGMA page_size")) ++faults;
    const PageWatch watch(database, [&](qint64 read) { step(read, all); });
    try {
        const sqlite::Statement rows(database, "PRAGMA main.quick_check");
        while (rows.step()) {
            // A row of one file's tree faults has a heading and a line for each of them.
            const QString row = rows.text(0);
            if (row != u"ok"_s) faults += std::max<qsizetype>(row.count(u'\n'), 1);
        }
    } catch (const sqlite::Failure& failure) {
        const int code = failure.resultCode() & 0xFF;
        watch.finish();
        // An error is a schema that does not make sense.
        if (code != SQLITE_CORRUPT && code != SQLITE_NOTADB && code != SQLITE_ERROR) throw;
        ++faults;
    }
    watch.finish();
    return faults;
}

QStringList integrity::wrongIndexes(const sqlite::Database& database, const Step& step) {
    QStringList wrong;
    const std::vector<Index> indexes = indexesOf(database);
    for (size_t at = 0; at < indexes.size(); ++at) {
        // Indexes of different tables count alike.
        const auto stepOfAll = [&](qint64 done, qint64 all) {
            const qint64 share = all == 0 ? 0 : std::min(done, all) * sharesPerIndex / all;
            step(static_cast<qint64>(at) * sharesPerIndex + share,
                 static_cast<qint64>(indexes.size()) * sharesPerIndex);
        };
        if (!isRight(database, indexes[at], stepOfAll)) wrong += indexes[at].name;
    }
    return wrong;
}
