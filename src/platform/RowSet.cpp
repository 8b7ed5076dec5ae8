#include "platform/RowSet.h"

#include <algorithm>
#include <limits>

#include "platform/dates.h"
#include "platform/errors.h"

using namespace ado;

namespace {

DbValue readValue(const sqlite::Statement& statement, int place, ColumnKind kind) {
    switch (sqlite3_column_type(statement.handle(), place)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return statement.number(place);
        case SQLITE_FLOAT:
            return sqlite3_column_double(statement.handle(), place);
        default:
            break;
    }
    QString text = statement.text(place);
    if (kind == ColumnKind::date) {
        const QDateTime moment = dates::fromStored(text);
        if (moment.isValid()) return moment;
    }
    return text;
}

void bindValue(const sqlite::Statement& statement, int parameter, const DbValue& value) {
    std::visit(
        [&](const auto& content) {
            using Content = std::decay_t<decltype(content)>;
            if constexpr (std::is_same_v<Content, std::monostate>) {
                statement.bindNull(parameter);
            } else if constexpr (std::is_same_v<Content, QDateTime>) {
                statement.bind(parameter, dates::toStored(content));
            } else if constexpr (std::is_same_v<Content, QByteArray>) {
                statement.bindBytes(parameter, content);
            } else {
                statement.bind(parameter, content);
            }
        },
        value.content());
}

}  // namespace

RowSet::RowSet(std::shared_ptr<detail::Session> session, const QString& sql)
    : session_(std::move(session)), shape_(QueryShape::of(*session_->database, sql)) {
    keyStatement_ = std::make_unique<sqlite::Statement>(*session_->database, shape_.keysSql);
    rowStatements_.resize(shape_.tables.size());
    fetched_.resize(shape_.tables.size());
    settle(loadKeys(1) ? Place::found : Place::end);
    session_->open.push_back(this);
}

RowSet::~RowSet() {
    std::erase(session_->open, this);
}

void RowSet::release() noexcept {
    blobs_.clear();
    rowStatements_.clear();
    keyStatement_.reset();
}

const sqlite::Database& RowSet::database() const {
    return *session_->database;
}

const Table& RowSet::tableOf(int column) const {
    return shape_.tables[static_cast<std::size_t>(columnAt(column).table)];
}

int RowSet::columnIndex(QStringView name) const {
    const auto found =
        std::find_if(shape_.columns.begin(), shape_.columns.end(), [name](const Column& column) {
            return column.name.size() == name.size() && name.compare(column.name, Qt::CaseInsensitive) == 0;
        });
    if (found == shape_.columns.end()) throw RuntimeError(errors::itemNotFound);
    return static_cast<int>(found - shape_.columns.begin());
}

void RowSet::expectOneTable() const {
    if (shape_.tables.size() != 1) throw RuntimeError(errors::operationNotAllowed);
}

void RowSet::expectRow() const {
    if (place_ == Place::end) throw RuntimeError(errors::noCurrentRecord);
}

bool RowSet::loadNextKey() {
    // A key added through this very recordset can turn up here too, as the statement is still running.
    bool fresh = false;
    while (keyStatement_ != nullptr && !fresh) {
        if (!keyStatement_->step()) {
            keyStatement_.reset();
            return false;
        }
        fresh = std::find(added_.begin(), added_.end(), keyStatement_->number(0)) == added_.end();
    }
    if (!fresh) return false;
    for (int table = 0; table < static_cast<int>(shape_.tables.size()); ++table) {
        keys_.push_back(keyStatement_->number(table));
    }
    return true;
}

bool RowSet::loadKeys(std::size_t wanted) {
    while (keys_.size() / shape_.tables.size() < wanted) {
        if (!loadNextKey()) return false;
    }
    return true;
}

qint32 RowSet::count() {
    loadKeys(std::numeric_limits<std::size_t>::max());
    return static_cast<qint32>(keys_.size() / shape_.tables.size() + added_.size());
}

void RowSet::settle(Place place) {
    place_ = place;
    const auto width = shape_.tables.size();
    if (place == Place::found) {
        const auto first = keys_.begin() + static_cast<std::ptrdiff_t>(position_ * width);
        current_.assign(first, first + static_cast<std::ptrdiff_t>(width));
    } else if (place == Place::added) {
        current_.assign(1, added_[position_]);
    }
    std::fill(fetched_.begin(), fetched_.end(), false);
    pending_.clear();
    spools_.clear();
    blobs_.clear();
}

void RowSet::moveNext() {
    expectRow();
    if (dirty()) update();
    ++position_;
    if (place_ == Place::found && loadKeys(position_ + 1)) return settle(Place::found);
    if (place_ == Place::found) position_ = 0;
    settle(position_ < added_.size() ? Place::added : Place::end);
}

const sqlite::Statement& RowSet::fetched(int table) {
    const auto at = static_cast<std::size_t>(table);
    auto& statement = rowStatements_[at];
    if (statement == nullptr) {
        const Table& shape = shape_.tables[at];
        QByteArray list;
        for (std::size_t column = 0; column < shape.columns.size(); ++column) {
            if (column > 0) list += ',';
            const QByteArray name = quoted(shape.columns[column]);
            // Asking for a length leaves the bytes themselves on disk.
            list += shape.kinds[column] == ColumnKind::bytes ? "length(" + name + ')' : name;
        }
        statement =
            std::make_unique<sqlite::Statement>(database(), "SELECT " + list + " FROM " + quoted(shape.name) +
                                                                " WHERE " + quoted(shape.key) + "=?1");
    }
    if (!fetched_[at]) {
        statement->reset();
        statement->bind(1, current_[at]);
        if (!statement->step()) throw RuntimeError(errors::rowGone);
        fetched_[at] = true;
    }
    return *statement;
}

DbValue RowSet::value(int column) {
    expectRow();
    if (const auto spool = spools_.find(column); spool != spools_.end()) {
        QByteArray whole;
        spool->second.forEachPiece([&whole](const QByteArray& piece, qint64) { whole += piece; });
        return whole;
    }
    if (const auto set = pending_.find(column); set != pending_.end()) return set->second;
    if (place_ == Place::fresh) return {};
    const Column& shape = columnAt(column);
    const sqlite::Statement& row = fetched(shape.table);
    if (shape.kind != ColumnKind::bytes || row.isNull(shape.placeInTable)) {
        return readValue(row, shape.placeInTable, shape.kind);
    }
    const Blob blob = openBlob(column, current_[static_cast<std::size_t>(shape.table)], false);
    QByteArray whole(sqlite3_blob_bytes(blob.get()), Qt::Uninitialized);
    const int result = sqlite3_blob_read(blob.get(), whole.data(), static_cast<int>(whole.size()), 0);
    if (result != SQLITE_OK) sqlite::throwFailure(database().handle(), result);
    return whole;
}

DbValue RowSet::fitting(const Column& column, const DbValue& value) const {
    if (value.isNull()) return value;
    switch (column.kind) {
        case ColumnKind::number:
            return value.toLong();
        case ColumnKind::text:
            return value.toText();
        case ColumnKind::bytes:
            return value.toBytes();
        case ColumnKind::date:
            break;
    }
    if (!std::holds_alternative<QString>(value.content())) return value.toDate();
    const QDateTime moment = dates::fromShown(value.toText());
    if (!moment.isValid()) throw RuntimeError(errors::typeMismatch);
    return moment;
}

void RowSet::setValue(int column, const DbValue& value) {
    expectRow();
    const Table& table = tableOf(column);
    // The database gives the keys; a key changed under a keyset would lose the row.
    if (table.columns[static_cast<std::size_t>(columnAt(column).placeInTable)] == table.key) {
        throw RuntimeError(errors::operationNotAllowed);
    }
    pending_[column] = fitting(columnAt(column), value);
    spools_.erase(column);
}

QByteArray RowSet::getChunk(int column, qint64 length) {
    expectRow();
    if (length < 0) throw RuntimeError(errors::invalidCall);
    if (length == 0 || place_ == Place::fresh) return {};
    const Column& shape = columnAt(column);
    if (shape.kind != ColumnKind::bytes) throw RuntimeError(errors::typeMismatch);
    OpenBlob& blob = blobs_[column];
    if (blob.handle == nullptr) {
        if (fetched(shape.table).isNull(shape.placeInTable)) return {};
        blob.handle = openBlob(column, current_[static_cast<std::size_t>(shape.table)], false);
    }
    const qint64 rest = sqlite3_blob_bytes(blob.handle.get()) - blob.offset;
    QByteArray chunk(std::min(length, rest), Qt::Uninitialized);
    const int result = sqlite3_blob_read(blob.handle.get(), chunk.data(), static_cast<int>(chunk.size()),
                                         static_cast<int>(blob.offset));
    if (result != SQLITE_OK) sqlite::throwFailure(database().handle(), result);
    blob.offset += chunk.size();
    return chunk;
}

void RowSet::appendChunk(int column, QByteArrayView bytes) {
    expectRow();
    if (columnAt(column).kind != ColumnKind::bytes) throw RuntimeError(errors::typeMismatch);
    pending_.erase(column);
    spools_[column].append(bytes);
}

void RowSet::addNew() {
    expectOneTable();
    if (place_ != Place::end && dirty()) update();
    settle(Place::fresh);
}

std::vector<int> RowSet::pendingColumns(int table) const {
    std::vector<int> columns;
    for (int column = 0; column < static_cast<int>(shape_.columns.size()); ++column) {
        const bool set = pending_.contains(column) || spools_.contains(column);
        if (set && columnAt(column).table == table) columns.push_back(column);
    }
    return columns;
}

void RowSet::bindPending(const sqlite::Statement& statement, const std::vector<int>& columns) const {
    int parameter = 0;
    for (const int column : columns) {
        ++parameter;
        if (const auto spool = spools_.find(column); spool != spools_.end()) {
            statement.bindZeros(parameter, spool->second.size());
        } else {
            bindValue(statement, parameter, pending_.at(column));
        }
    }
}

void RowSet::update() {
    expectRow();
    if (!dirty()) return;
    if (place_ == Place::fresh) {
        insertRow();
    } else {
        sqlite::Transaction transaction(database());
        for (int table = 0; table < static_cast<int>(shape_.tables.size()); ++table)
            updateRow(table);
        transaction.commit();
    }
    settle(place_);
}

void RowSet::insertRow() {
    const std::vector<int> columns = pendingColumns(0);
    QByteArray names;
    QByteArray marks;
    for (const int column : columns) {
        names += (names.isEmpty() ? "" : ",") +
                 quoted(tableOf(column).columns[static_cast<std::size_t>(columnAt(column).placeInTable)]);
        marks += marks.isEmpty() ? "?" : ",?";
    }
    const QByteArray values = columns.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + marks + ')';
    sqlite::Transaction transaction(database());
    const sqlite::Statement insert(database(), "INSERT INTO " + quoted(shape_.tables[0].name) + values);
    bindPending(insert, columns);
    insert.step();
    const qint64 key = sqlite3_last_insert_rowid(database().handle());
    current_.assign(1, key);
    writeSpools(0);
    transaction.commit();
    added_.push_back(key);
    position_ = added_.size() - 1;
    place_ = Place::added;
}

void RowSet::updateRow(int table) {
    const std::vector<int> columns = pendingColumns(table);
    if (columns.empty()) return;
    const auto at = static_cast<std::size_t>(table);
    QByteArray assignments;
    for (const int column : columns) {
        assignments +=
            (assignments.isEmpty() ? "" : ",") +
            quoted(tableOf(column).columns[static_cast<std::size_t>(columnAt(column).placeInTable)]) + "=?";
    }
    const sqlite::Statement statement(database(), "UPDATE " + quoted(shape_.tables[at].name) + " SET " +
                                                      assignments + " WHERE " +
                                                      quoted(shape_.tables[at].key) + "=?");
    bindPending(statement, columns);
    statement.bind(static_cast<int>(columns.size()) + 1, current_[at]);
    statement.step();
    if (sqlite3_changes(database().handle()) == 0) throw RuntimeError(errors::rowGone);
    writeSpools(table);
}

void RowSet::writeSpools(int table) {
    for (const auto& [column, spool] : spools_) {
        if (columnAt(column).table != table || spool.size() == 0) continue;
        const Blob blob = openBlob(column, current_[static_cast<std::size_t>(table)], true);
        spool.forEachPiece([&](const QByteArray& piece, qint64 at) {
            const int result = sqlite3_blob_write(blob.get(), piece.constData(),
                                                  static_cast<int>(piece.size()), static_cast<int>(at));
            if (result != SQLITE_OK) sqlite::throwFailure(database().handle(), result);
        });
    }
}

RowSet::Blob RowSet::openBlob(int column, qint64 key, bool writable) const {
    const Table& table = tableOf(column);
    sqlite3_blob* opened = nullptr;
    const int result =
        sqlite3_blob_open(database().handle(), "main", table.name.constData(),
                          table.columns[static_cast<std::size_t>(columnAt(column).placeInTable)].constData(),
                          key, writable ? 1 : 0, &opened);
    Blob blob(opened);
    if (result != SQLITE_OK) sqlite::throwFailure(database().handle(), result);
    return blob;
}

void RowSet::remove() {
    expectOneTable();
    expectRow();
    if (place_ == Place::fresh) throw RuntimeError(errors::noCurrentRecord);
    const sqlite::Statement statement(database(), "DELETE FROM " + quoted(shape_.tables[0].name) + " WHERE " +
                                                      quoted(shape_.tables[0].key) + "=?1");
    statement.bind(1, current_[0]);
    statement.step();
    if (sqlite3_changes(database().handle()) == 0) throw RuntimeError(errors::rowGone);
    settle(place_);
}
