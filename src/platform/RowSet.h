#pragma once

#include <map>
#include <memory>
#include <vector>

#include "platform/ChunkSpool.h"
#include "platform/DbValue.h"
#include "platform/Keyset.h"
#include "platform/QueryShape.h"
#include "platform/index.h"
#include "platform/sqlite.h"

namespace ado {

class RowSet;

namespace detail {
/// The open file of a connection, shared with its recordsets, which may outlive the connection object.
class Session {
 public:
    QString path;
    std::unique_ptr<sqlite::Database> database;
    std::vector<RowSet*> open;
};
}  // namespace detail

/// The rows of an open recordset: the keyset, the current row and its pending values. See ado.h for what each
/// operation does and throws.
class RowSet final {
 public:
    RowSet(std::shared_ptr<detail::Session> session, const QString& sql);
    ~RowSet();
    RowSet(const RowSet&) = delete;
    RowSet& operator=(const RowSet&) = delete;

    /// False once the recordset or its connection has been closed.
    bool alive() const noexcept { return session_ != nullptr; }
    /// The path of the open file. Only while alive.
    const QString& path() const noexcept { return session_->path; }
    /// Releases everything that keeps the file open.
    void release() noexcept;

    int columnIndex(QStringView name) const;
    bool atEnd() const noexcept { return place_ == Place::end; }
    void moveNext();
    qint32 count();

    DbValue value(int column);
    void setValue(int column, const DbValue& value);
    QByteArray getChunk(int column, qint64 length);
    void appendChunk(int column, QByteArrayView bytes);

    void addNew();
    void update();
    void remove();

 private:
    enum class Place { end, found, added, fresh };

    struct BlobCloser {
        void operator()(sqlite3_blob* blob) const noexcept { sqlite3_blob_close(blob); }
    };
    using Blob = std::unique_ptr<sqlite3_blob, BlobCloser>;
    struct OpenBlob {
        Blob handle;
        qint64 offset = 0;
    };

    const sqlite::Database& database() const;
    const Table& tableOf(int column) const;
    const QByteArray& nameInTable(int column) const;
    const Column& columnAt(int column) const { return elementAt(shape_.columns, column); }
    void expectOneTable() const;
    void expectRow() const;

    void settle(Place place);
    const RowKeys& currentKeys();
    const sqlite::Statement& fetched(int table);

    bool dirty() const noexcept { return !pending_.empty() || !spools_.empty() || place_ == Place::fresh; }
    DbValue fitting(const Column& column, const DbValue& value) const;
    void bindPending(const sqlite::Statement& statement, const std::vector<int>& columns) const;
    std::vector<int> pendingColumns(int table) const;
    void rest();
    /// Runs `work` in a transaction.
    template <typename Work>
    void change(Work&& work);
    /// True when the engine has no key left for a new row.
    bool lastKeyGivenOut() const;
    qint64 insertRow();
    void updateRow(int table);
    void writeSpools(int table, const RowKeys& keys);
    Blob openBlob(int column, qint64 key, bool writable) const;

    std::shared_ptr<detail::Session> session_;
    QueryShape shape_;

    std::unique_ptr<Keyset> found_;
    std::vector<qint64> added_;  // keys of the rows added here; there is one table then
    std::size_t addedPosition_ = 0;
    Place place_ = Place::end;
    RowKeys current_;  // of a row that is not fresh

    std::vector<std::unique_ptr<sqlite::Statement>> rowStatements_;
    std::vector<bool> fetched_;
    std::map<int, DbValue> pending_;
    std::map<int, ChunkSpool> spools_;
    std::map<int, OpenBlob> blobs_;
};

}  // namespace ado
