#include "platform/ado.h"

#include <QDir>

#include "platform/RowSet.h"
#include "platform/password.h"

using namespace Qt::StringLiterals;

namespace {

struct ConnectionParts {
    QString path;
    QString password;
};

ConnectionParts parse(const QString& connectionString) {
    const QString sourceKey = u"Data Source="_s;
    const QString passwordKey = u";Jet OLEDB:Database Password="_s;
    const qsizetype source = connectionString.indexOf(sourceKey, 0, Qt::CaseInsensitive);
    // From the end, as the path may contain anything, even a semicolon.
    const qsizetype password = connectionString.lastIndexOf(passwordKey, -1, Qt::CaseInsensitive);
    if (source < 0 || password < source) throw RuntimeError(errors::invalidCall);
    const qsizetype path = source + sourceKey.size();
    return {connectionString.mid(path, password - path), connectionString.mid(password + passwordKey.size())};
}

/// There are two data files: whoever has to mend or replace one must know which.
RuntimeError naming(const QString& path, const RuntimeError& failure) {
    return {failure.number(), failure.description() + u"\n\n"_s + QDir::toNativeSeparators(path)};
}

/// Runs an operation on an open file, whose failures then name it.
template <typename Work>
auto onFile(const QString& path, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const sqlite::Failure& failure) {
        throw naming(path, failure);
    }
}

}  // namespace

namespace ado {

Connection::Connection() = default;

Connection::~Connection() = default;

void Connection::Open(const QString& connectionString, const QString&, const QString&, int) {
    if (isOpen()) throw RuntimeError(errors::objectOpen);
    QString path;
    try {
        const ConnectionParts parts = parse(connectionString);
        path = parts.path;
        auto session = std::make_shared<detail::Session>();
        session->path = path;
        session->database = std::make_unique<sqlite::Database>(path, sqlite::Database::Mode::readWrite);
        password::checkHeader(*session->database, parts.password);
        session->database->syncEveryCommit();
        session->database->readSchema();
        session_ = std::move(session);
        refusal_.reset();
    } catch (const RuntimeError& failure) {
        refusal_ = path.isEmpty() ? failure : naming(path, failure);
        throw RuntimeError(*refusal_);
    }
}

void Connection::Close() {
    if (!isOpen()) throw RuntimeError(errors::objectClosed);
    const std::vector<RowSet*> open = std::exchange(session_->open, {});
    for (RowSet* rows : open)
        rows->release();
    session_.reset();
}

DbValue Field::Value() const {
    return rows_->value(column_);
}

void Field::setValue(const DbValue& value) const {
    rows_->setValue(column_, value);
}

QByteArray Field::GetChunk(qint64 length) const {
    return rows_->getChunk(column_, length);
}

void Field::AppendChunk(QByteArrayView bytes) const {
    rows_->appendChunk(column_, bytes);
}

Recordset::Recordset() = default;

Recordset::~Recordset() = default;

void Recordset::Open(const QString& sql, Connection& connection, int, int, int) {
    if (isOpen()) throw RuntimeError(errors::objectOpen);
    rows_.reset();
    try {
        if (!connection.isOpen()) throw connection.refusal_.value_or(RuntimeError(errors::objectClosed));
        const std::shared_ptr<detail::Session>& session = connection.session_;
        rows_ = onFile(session->path, [&] { return std::make_shared<RowSet>(session, sql); });
        refusal_.reset();
    } catch (const RuntimeError& failure) {
        refusal_ = failure;
        throw;
    }
}

const std::shared_ptr<RowSet>& Recordset::rows() const {
    if (!isOpen()) throw refusal_.value_or(RuntimeError(errors::objectClosed));
    return rows_;
}

void Recordset::Close() {
    rows()->release();
    rows_.reset();
}

bool Recordset::isOpen() const noexcept {
    return rows_ != nullptr && rows_->alive();
}

bool Recordset::Eof() const {
    return rows()->atEnd();
}

void Recordset::MoveNext() {
    RowSet& rows = *this->rows();
    onFile(rows.path(), [&] { rows.moveNext(); });
}

qint32 Recordset::RecordCount() const {
    RowSet& rows = *this->rows();
    return onFile(rows.path(), [&] { return rows.count(); });
}

Field Recordset::Fields(QStringView name) const {
    const std::shared_ptr<RowSet>& rows = this->rows();
    return {rows, rows->columnIndex(name)};
}

void Recordset::AddNew() {
    rows()->addNew();
}

void Recordset::Update() {
    RowSet& rows = *this->rows();
    onFile(rows.path(), [&] { rows.update(); });
}

void Recordset::Delete(int affected) {
    if (affected != 1) throw RuntimeError(errors::invalidCall);
    RowSet& rows = *this->rows();
    onFile(rows.path(), [&] { rows.remove(); });
}

}  // namespace ado
