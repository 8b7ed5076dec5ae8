#include "platform/sqlite.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QVarLengthArray>
#include <chrono>
#include <thread>

#include "platform/LockPatience.h"
#include "platform/collation.h"
#include "platform/errors.h"
#include "platform/index.h"

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds busyStep{5};

/// Waits for another program's lock. SQLite's own handler polls ever less often and keeps missing the gaps
/// while another program writes row after row.
int waitForOthers(void* handle, int tries) noexcept {
    const char* file = sqlite3_db_filename(static_cast<sqlite3*>(handle), "main");
    if (!LockPatience::ofThread().lasts(file, tries, LockPatience::Clock::now())) return 0;
    std::this_thread::sleep_for(busyStep);
    return 1;
}

using Utf16 = QVarLengthArray<QChar, 256>;

QStringView decode(int length, const void* bytes, Utf16& buffer) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    buffer.resize(decoder.requiredSpace(length));
    const QChar* end =
        decoder.appendToBuffer(buffer.data(), QByteArrayView(static_cast<const char*>(bytes), length));
    return {buffer.data(), end};
}

int compareCzech(void*, int leftLength, const void* left, int rightLength, const void* right) noexcept {
    if (leftLength == rightLength && std::memcmp(left, right, toSize(leftLength)) == 0) return 0;
    Utf16 leftBuffer;
    Utf16 rightBuffer;
    return collation::compare(decode(leftLength, left, leftBuffer), decode(rightLength, right, rightBuffer));
}

/// Data files may come from elsewhere: nothing in their schema may run.
void distrustFile(sqlite3* handle) {
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_exec(handle, "PRAGMA ignore_check_constraints=ON", nullptr, nullptr, nullptr);
}

qint32 number(int resultCode) {
    switch (resultCode & 0xFF) {
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return errors::databaseReadOnly;
        case SQLITE_ERROR:
            return errors::databaseSql;
        case SQLITE_CONSTRAINT:
            return errors::databaseConstraint;
        case SQLITE_NOMEM:
            return errors::outOfMemory;
        default:
            return errors::database;
    }
}

}  // namespace

QString sqlite::description(int resultCode) {
    switch (resultCode & 0xFF) {
        case SQLITE_BUSY:
            return u"Soubor databáze právě používá jiný program. Zkuste to znovu později."_s;
        case SQLITE_LOCKED:
            return u"Tabulka databáze je právě používána."_s;
        case SQLITE_FULL:
            return u"Disk je plný, změny nebylo možné zapsat."_s;
        case SQLITE_READONLY:
            return u"Soubor databáze je pouze pro čtení, změny nelze zapsat."_s;
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return u"K souboru databáze nemáte oprávnění."_s;
        case SQLITE_CANTOPEN:
            return u"Soubor databáze nelze otevřít."_s;
        case SQLITE_IOERR:
            return u"Soubor databáze nelze číst nebo zapisovat."_s;
        case SQLITE_CORRUPT:
            return u"Soubor databáze je poškozený."_s;
        case SQLITE_NOTADB:
            return u"Soubor není databází programu."_s;
        case SQLITE_CONSTRAINT:
            return errors::description(errors::databaseConstraint);
        case SQLITE_NOMEM:
            return errors::description(errors::outOfMemory);
        case SQLITE_TOOBIG:
            return u"Hodnota je pro databázi příliš velká."_s;
        case SQLITE_INTERRUPT:
        case SQLITE_ABORT:
            return u"Operace databáze byla přerušena."_s;
        case SQLITE_ERROR:
            return errors::description(errors::databaseSql);
        default:
            return errors::description(errors::database);
    }
}

void sqlite::throwFailure(sqlite3* handle, int resultCode) {
    qWarning("SQLite %d: %s", resultCode,
             handle != nullptr ? sqlite3_errmsg(handle) : sqlite3_errstr(resultCode));
    throw Failure(number(resultCode), description(resultCode), resultCode);
}

sqlite::Database::Database() {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open(":memory:", &opened);
    handle_.reset(opened);
    if (result != SQLITE_OK) throwFailure(opened, result);
    prepare();
}

sqlite::Database::Database(const QString& path, Mode mode) {
    // An absolute path, as a relative one could look like a file: URI with options.
    const QString absolute = QFileInfo(path).absoluteFilePath();
    if (mode == Mode::create) {
        QFile file(absolute);
        if (!file.open(QFile::NewOnly | QFile::WriteOnly))
            throw RuntimeError(errors::database, description(SQLITE_CANTOPEN));
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    }
    sqlite3* opened = nullptr;
    const int access = mode == Mode::readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    const int result =
        sqlite3_open_v2(absolute.toUtf8().constData(), &opened, access | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(opened);
    if (result != SQLITE_OK) {
        // SQLite has one code for a missing file and a missing right.
        const QFileInfo file(absolute);
        throwFailure(opened, file.exists() && !file.isReadable() ? SQLITE_PERM : result);
    }
    prepare();
}

void sqlite::Database::prepare() {
    sqlite3_extended_result_codes(handle(), 1);
    distrustFile(handle());
    sqlite3_busy_handler(handle(), waitForOthers, handle());
    const int registered =
        sqlite3_create_collation_v2(handle(), collation::name, SQLITE_UTF8, nullptr, compareCzech, nullptr);
    if (registered != SQLITE_OK) throwFailure(handle(), registered);
}

void sqlite::Database::readSchema() const {
    // A computed column is worked out whenever its row is read, which may take minutes. Virtual tables have
    // no root page. Only tables declared with an "AS" are looked into, as none of ours is.
    const qint64 computed = number(
        "SELECT count(*) FROM sqlite_schema AS s, pragma_table_xinfo(s.name) "
        "WHERE s.type='table' AND s.rootpage>0 AND s.sql LIKE '%as%(%' AND hidden>1");
    if (computed > 0) throw RuntimeError(errors::database, description(SQLITE_NOTADB));
}

void sqlite::Database::syncEveryCommit() const {
    // With FULL a power cut can bring a deleted journal back, and with it the state before the commit.
    exec("PRAGMA synchronous=EXTRA");
}

void sqlite::Database::exec(const char* sql) const {
    const int result = sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) throwFailure(handle(), result);
}

qint64 sqlite::Database::number(const char* sql) const {
    const Statement statement(*this, sql);
    if (!statement.step()) throw RuntimeError(errors::noCurrentRecord);
    return statement.number(0);
}

void sqlite::Database::attach(const QString& path, const QString& schema) const {
    const Statement attaching(*this, "ATTACH ? AS ?");
    attaching.bind(1, QFileInfo(path).absoluteFilePath());
    attaching.bind(2, schema);
    attaching.step();
}

void sqlite::Database::copyInto(const Database& target,
                                const std::function<void(qint64 done, qint64 all)>& step) const {
    struct Finish {
        void operator()(sqlite3_backup* backup) const noexcept { sqlite3_backup_finish(backup); }
    };
    const std::unique_ptr<sqlite3_backup, Finish> backup(
        sqlite3_backup_init(target.handle(), "main", handle(), "main"));
    if (backup == nullptr) throwFailure(target.handle(), sqlite3_extended_errcode(target.handle()));
    // The lock is given back between the pieces. Each time somebody has written, copying starts anew; in the
    // end the writers wait.
    constexpr int pages = 2000;
    constexpr int patience = 3;
    int passes = 0;
    int left = 0;
    int result = SQLITE_OK;
    while (result == SQLITE_OK) {
        const int all = sqlite3_backup_pagecount(backup.get());
        step(all - left, all);
        result = sqlite3_backup_step(backup.get(), passes < patience ? pages : -1);
        if (sqlite3_backup_remaining(backup.get()) >= left) ++passes;
        left = sqlite3_backup_remaining(backup.get());
    }
    if (result != SQLITE_DONE) throwFailure(nullptr, result);
}

sqlite::Statement::Statement(const Database& database, const QByteArray& sql) {
    sqlite3_stmt* prepared = nullptr;
    const int result =
        sqlite3_prepare_v2(database.handle(), sql.constData(), countOf(sql), &prepared, nullptr);
    handle_.reset(prepared);
    if (result != SQLITE_OK) throwFailure(database.handle(), result);
    if (prepared == nullptr) throw RuntimeError(errors::databaseSql);
}

void sqlite::Statement::check(int resultCode) const {
    if (resultCode != SQLITE_OK) throwFailure(sqlite3_db_handle(handle()), resultCode);
}

void sqlite::Statement::bind(int parameter, qint64 number) const {
    check(sqlite3_bind_int64(handle(), parameter, number));
}

void sqlite::Statement::bind(int parameter, double number) const {
    check(sqlite3_bind_double(handle(), parameter, number));
}

void sqlite::Statement::bind(int parameter, const QString& text) const {
    const QByteArray utf8 = text.toUtf8();
    check(sqlite3_bind_text64(handle(), parameter, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()),
                              SQLITE_TRANSIENT, SQLITE_UTF8));
}

void sqlite::Statement::bindTextInPlace(int parameter, QByteArrayView utf8) const {
    // A null pointer would be taken for Null.
    check(sqlite3_bind_text64(handle(), parameter, utf8.isEmpty() ? "" : utf8.data(),
                              static_cast<sqlite3_uint64>(utf8.size()), SQLITE_STATIC, SQLITE_UTF8));
}

void sqlite::Statement::bindBytesInPlace(int parameter, QByteArrayView bytes) const {
    check(sqlite3_bind_blob64(handle(), parameter, bytes.isEmpty() ? "" : bytes.data(),
                              static_cast<sqlite3_uint64>(bytes.size()), SQLITE_STATIC));
}

void sqlite::Statement::bindBytes(int parameter, QByteArrayView bytes) const {
    check(sqlite3_bind_blob64(handle(), parameter, bytes.isEmpty() ? "" : bytes.data(),
                              static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT));
}

void sqlite::Statement::bindZeros(int parameter, qint64 length) const {
    check(sqlite3_bind_zeroblob64(handle(), parameter, static_cast<sqlite3_uint64>(length)));
}

void sqlite::Statement::bindNull(int parameter) const {
    check(sqlite3_bind_null(handle(), parameter));
}

bool sqlite::Statement::step() const {
    const int result = sqlite3_step(handle());
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) return false;
    // The message must be read before the reset that makes the statement usable again.
    try {
        throwFailure(sqlite3_db_handle(handle()), result);
    } catch (...) {
        sqlite3_reset(handle());
        throw;
    }
}

QString sqlite::Statement::text(int column) const {
    const auto* utf8 = reinterpret_cast<const char*>(sqlite3_column_text(handle(), column));
    if (utf8 == nullptr) return {};
    return QString::fromUtf8(utf8, sqlite3_column_bytes(handle(), column));
}

sqlite::Transaction::Transaction(const Database& database) : database_(database) {
    database_.exec("BEGIN IMMEDIATE");
}

sqlite::Transaction::~Transaction() {
    // Some failures (a full disk, say) make SQLite roll back by itself; a second rollback would be an error.
    if (open_ && sqlite3_get_autocommit(database_.handle()) == 0) {
        sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void sqlite::Transaction::commit() {
    database_.exec("COMMIT");
    open_ = false;
}
