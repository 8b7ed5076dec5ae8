#include "platform/RowSet.h"

#include <algorithm>
#include <limits>

#include "platform/collation.h"
#include "platform/dates.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;
using namespace ado;

namespace {

DbValue readValue(const sqlite::Statement& statement, int place, ColumnKind kind) {
    // Text columns store numbers as text, so their storage class need not be checked.
    if (kind != ColumnKind::text) {
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
    }
    QString text = statement.text(place);
    if (text.isNull()) return {};
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

/// Keys are 32-bit numbers, and one that has been given out is never given again.
RuntimeError keysExhausted() {
    return {errors::database, u"Tabulka už vydala všechna čísla záznamů, další záznam nelze přidat."_s};
}

}  // namespace

RowSet::RowSet(std::shared_ptr<detail::Session> session, const QString& sql)
    : session_(std::move(session)), shape_(QueryShape::of(*session_->database, sql)) {
    found_ = std::make_unique<Keyset>(*session_->database, shape_);
    rowStatements_.resize(shape_.tables.size());
    fetched_.resize(shape_.tables.size());
    settle(found_->atEnd() ? Place::end : Place::found);
    session_->open.push_back(this);
}

RowSet::~RowSet() {
    release();
}

void RowSet::release() noexcept {
    if (session_ == nullptr) return;
    blobs_.clear();
    rowStatements_.clear();
    found_.reset();
    std::erase(session_->open, this);
    session_.reset();
}

void RowSet::rest() {
    // A statement on a row holds the shared lock, and upgrading a lock does not wait for others.
    blobs_.clear();
    for (const auto& statement : rowStatements_) {
        if (statement != nullptr) statement->reset();
    }
    std::fill(fetched_.begin(), fetched_.end(), false);
}

template <typename Work>
void RowSet::change(Work&& work) {
    const auto once = [&] {
        const sqlite::Database& file = database();
        sqlite::Transaction transaction(file);
        work();
        transaction.commit();
    };
    rest();
    try {
        once();
    } catch (const sqlite::Failure& failure) {
        if (failure.resultCode() != SQLITE_CORRUPT_INDEX) throw;
        // Another version of the collation library sorts differently, and its indexes do not fit. The rows
        // themselves are undamaged.
        database().exec((QByteArray("REINDEX ") + collation::name).constData());
        once();
    }
}

const sqlite::Database& RowSet::database() const {
    return *session_->database;
}

const Table& RowSet::tableOf(int column) const {
    return elementAt(shape_.tables, columnAt(column).table);
}

const QByteArray& RowSet::nameInTable(int column) const {
    return elementAt(tableOf(column).columns, columnAt(column).placeInTable);
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
    if (!alive()) throw RuntimeError(errors::objectClosed);
    if (place_ == Place::end) throw RuntimeError(errors::noCurrentRecord);
}

qint32 RowSet::count() {
    if (!alive()) throw RuntimeError(errors::objectClosed);
    return static_cast<qint32>(found_->count() + added_.size());
}

void RowSet::settle(Place place) {
    place_ = place;
    current_.clear();
    std::fill(fetched_.begin(), fetched_.end(), false);
    if (!pending_.empty()) pending_.clear();
    if (!spools_.empty()) spools_.clear();
    if (!blobs_.empty()) blobs_.clear();
}

const RowKeys& RowSet::currentKeys() {
    if (current_.empty())
        current_ = place_ == Place::added ? RowKeys{added_[addedPosition_]} : found_->keys();
    return current_;
}

void RowSet::moveNext() {
    expectRow();
    if (dirty()) update();
    if (place_ == Place::found) {
        found_->next();
        if (!found_->atEnd()) return settle(Place::found);
        addedPosition_ = 0;
    } else {
        ++addedPosition_;
    }
    settle(addedPosition_ < added_.size() ? Place::added : Place::end);
}

const sqlite::Statement& RowSet::fetched(int table) {
    const std::size_t at = toSize(table);
    auto& statement = rowStatements_[at];
    if (statement == nullptr) {
        const Table& shape = shape_.tables[at];
        QByteArray list;
        for (std::size_t column = 0; column < shape.columns.size(); ++column) {
            if (column > 0) list += ',';
            const QByteArray name = quoted(shape.columns[column]);
            // Only the length is read; the bytes stay on disk.
            list += shape.kinds[column] == ColumnKind::bytes ? "length(" + name + ')' : name;
        }
        statement =
            std::make_unique<sqlite::Statement>(database(), "SELECT " + list + " FROM " + quoted(shape.name) +
                                                                " WHERE " + quoted(shape.key) + "=?1");
    }
    if (!fetched_[at]) {
        statement->reset();
        statement->bind(1, currentKeys()[at]);
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
    if (place_ == Place::found && found_->row() != nullptr) {
        return readValue(*found_->row(), countOf(shape_.tables) + column, shape.kind);
    }
    const sqlite::Statement& row = fetched(shape.table);
    if (shape.kind != ColumnKind::bytes || row.isNull(shape.placeInTable)) {
        return readValue(row, shape.placeInTable, shape.kind);
    }
    const Blob blob = openBlob(column, elementAt(currentKeys(), shape.table), false);
    QByteArray whole(sqlite3_blob_bytes(blob.get()), Qt::Uninitialized);
    const int result = sqlite3_blob_read(blob.get(), whole.data(), countOf(whole), 0);
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
    const bool shown = std::holds_alternative<QString>(value.content());
    const QDateTime moment = shown ? dates::fromShown(value.toText()) : value.toDate();
    if (!moment.isValid()) throw RuntimeError(errors::typeMismatch);
    return moment;
}

void RowSet::setValue(int column, const DbValue& value) {
    expectRow();
    // The database assigns keys; changing one under a keyset would lose the row.
    if (nameInTable(column) == tableOf(column).key) {
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
        blob.handle = openBlob(column, elementAt(currentKeys(), shape.table), false);
    }
    const qint64 rest = sqlite3_blob_bytes(blob.handle.get()) - blob.offset;
    QByteArray chunk(std::min(length, rest), Qt::Uninitialized);
    const int result =
        sqlite3_blob_read(blob.handle.get(), chunk.data(), countOf(chunk), static_cast<int>(blob.offset));
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
    if (!alive()) throw RuntimeError(errors::objectClosed);
    expectOneTable();
    if (place_ != Place::end && dirty()) update();
    settle(Place::fresh);
}

std::vector<int> RowSet::pendingColumns(int table) const {
    std::vector<int> columns;
    for (int column = 0; column < countOf(shape_.columns); ++column) {
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
        found_->pause();
        qint64 key = 0;
        change([&] { key = insertRow(); });
        added_.push_back(key);
        found_->added(key);
        addedPosition_ = added_.size() - 1;
        settle(Place::added);
    } else {
        found_->complete();
        change([&] {
            for (int table = 0; table < countOf(shape_.tables); ++table)
                updateRow(table);
        });
        settle(place_);
    }
}

bool RowSet::lastKeyGivenOut() const {
    const sqlite::Statement given(database(), "SELECT max(seq) FROM sqlite_sequence WHERE name=?1");
    given.bindTextInPlace(1, shape_.tables[0].name);
    return given.step() && given.number(0) == std::numeric_limits<qint64>::max();
}

qint64 RowSet::insertRow() {
    const std::vector<int> columns = pendingColumns(0);
    QByteArrayList names;
    for (const int column : columns)
        names += nameInTable(column);
    const sqlite::Statement insert(database(), insertSql(shape_.tables[0].name, names));
    bindPending(insert, columns);
    try {
        insert.step();
    } catch (const sqlite::Failure& failure) {
        // The engine calls it a full disk when it has given out its last key.
        if ((failure.resultCode() & 0xFF) == SQLITE_FULL && lastKeyGivenOut()) throw keysExhausted();
        throw;
    }
    const qint64 key = sqlite3_last_insert_rowid(database().handle());
    if (key > std::numeric_limits<qint32>::max()) throw keysExhausted();
    writeSpools(0, {key});
    return key;
}

void RowSet::updateRow(int table) {
    const std::vector<int> columns = pendingColumns(table);
    if (columns.empty()) return;
    const std::size_t at = toSize(table);
    QByteArray assignments;
    for (const int column : columns) {
        assignments += (assignments.isEmpty() ? "" : ",") + quoted(nameInTable(column)) + "=?";
    }
    const sqlite::Statement statement(database(), "UPDATE " + quoted(shape_.tables[at].name) + " SET " +
                                                      assignments + " WHERE " +
                                                      quoted(shape_.tables[at].key) + "=?");
    bindPending(statement, columns);
    statement.bind(countOf(columns) + 1, currentKeys()[at]);
    statement.step();
    if (sqlite3_changes(database().handle()) == 0) throw RuntimeError(errors::rowGone);
    writeSpools(table, currentKeys());
}

void RowSet::writeSpools(int table, const RowKeys& keys) {
    for (const auto& [column, spool] : spools_) {
        if (columnAt(column).table != table || spool.size() == 0) continue;
        const Blob blob = openBlob(column, elementAt(keys, table), true);
        spool.forEachPiece([&](const QByteArray& piece, qint64 at) {
            const int result =
                sqlite3_blob_write(blob.get(), piece.constData(), countOf(piece), static_cast<int>(at));
            if (result != SQLITE_OK) sqlite::throwFailure(database().handle(), result);
        });
    }
}

RowSet::Blob RowSet::openBlob(int column, qint64 key, bool writable) const {
    sqlite3_blob* opened = nullptr;
    const int result = sqlite3_blob_open(database().handle(), "main", tableOf(column).name.constData(),
                                         nameInTable(column).constData(), key, writable ? 1 : 0, &opened);
    Blob blob(opened);
    if (result != SQLITE_OK) sqlite::throwFailure(database().handle(), result);
    return blob;
}

void RowSet::remove() {
    expectOneTable();
    expectRow();
    if (place_ == Place::fresh) throw RuntimeError(errors::noCurrentRecord);
    found_->complete();
    change([this] {
        const sqlite::Statement statement(database(), "DELETE FROM " + quoted(shape_.tables[0].name) +
                                                          " WHERE " + quoted(shape_.tables[0].key) + "=?1");
        statement.bind(1, currentKeys()[0]);
        statement.step();
        if (sqlite3_changes(database().handle()) == 0) throw RuntimeError(errors::rowGone);
    });
    settle(place_);
}
