#pragma once

#include <sqlite3.h>

#include <QByteArrayView>
#include <QString>
#include <functional>
#include <memory>

#include "platform/errors.h"

/// SQLite's C interface with every result checked. Failures are thrown as RuntimeError with a Czech
/// description; SQLite's own message goes to standard error.
namespace sqlite {

/// The Czech description of a (primary or extended) result code.
QString description(int resultCode);

/// A failure reported by SQLite, with its result code.
class Failure final : public RuntimeError {
 public:
    Failure(qint32 number, const QString& description, int resultCode)
        : RuntimeError(number, description), resultCode_(resultCode) {}

    /// The extended result code.
    int resultCode() const noexcept { return resultCode_; }

 private:
    int resultCode_;
};

/// @throws Failure always, for the last call on `handle`.
[[noreturn]] void throwFailure(sqlite3* handle, int resultCode);

/// One open database file with the collation CZECH and the busy time-out of LockPatience. Triggers, views
/// and checks of the file do not run.
class Database final {
 public:
    enum class Mode { readOnly, readWrite, create };

    /// An empty database in memory.
    Database();
    /// Opens the file. Mode `create` creates it, for the owner only, and refuses an existing one. With
    /// `readOnly` nothing is written, so that a file whose last writer was killed within a transaction cannot
    /// be read: the failure has the code SQLITE_READONLY_ROLLBACK.
    /// @throws RuntimeError when it cannot be opened. SQLite reads nothing yet, so damage shows later.
    Database(const QString& path, Mode mode);

    sqlite3* handle() const noexcept { return handle_.get(); }

    /// Reads the schema, so that a truncated or locked file is noticed now: SQLite reads as late as it can.
    /// @throws RuntimeError then, and for a file with computed columns, which ours never have.
    void readSchema() const;

    /// From now on a commit that has returned survives a power cut. Reads the file, so its header must have
    /// been checked before.
    void syncEveryCommit() const;

    /// Runs statements that give no rows, separated by semicolons.
    void exec(const char* sql) const;
    /// The first column of the first row of a query.
    /// @throws RuntimeError when there is no row.
    qint64 number(const char* sql) const;

    /// Makes another file readable under the name `schema`, in the mode of this one.
    void attach(const QString& path, const QString& schema) const;

    /// Replaces the content of `target` by that of this file as it stands at one moment. Others can read and
    /// write this file meanwhile.
    /// @param step runs between the pages and is told how many are done, and of how many (0 at the
    /// beginning);
    ///        what it throws ends the copying.
    void copyInto(const Database& target, const std::function<void(qint64 done, qint64 all)>& step) const;

 private:
    void prepare();

    struct Close {
        void operator()(sqlite3* handle) const noexcept { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, Close> handle_;
};

/// A prepared statement. As in SQLite, columns count from 0 and parameters from 1.
class Statement final {
 public:
    /// @throws RuntimeError when the text does not compile or is empty.
    Statement(const Database& database, const QByteArray& sql);

    sqlite3_stmt* handle() const noexcept { return handle_.get(); }

    void bind(int parameter, qint64 number) const;
    void bind(int parameter, double number) const;
    void bind(int parameter, const QString& text) const;
    /// Bind without a copy: UTF-8 and bytes must stay valid until the statement has run.
    void bindTextInPlace(int parameter, QByteArrayView utf8) const;
    void bindBytesInPlace(int parameter, QByteArrayView bytes) const;
    void bindBytes(int parameter, QByteArrayView bytes) const;
    void bindZeros(int parameter, qint64 length) const;
    void bindNull(int parameter) const;

    /// Moves to the next row; false when there is none.
    bool step() const;
    /// Resets the statement to run again; parameters keep their values.
    void reset() const noexcept { sqlite3_reset(handle_.get()); }

    bool isNull(int column) const { return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL; }
    qint64 number(int column) const { return sqlite3_column_int64(handle_.get(), column); }
    /// The column as text; a null string for Null.
    QString text(int column) const;

 private:
    void check(int resultCode) const;

    struct Finalize {
        void operator()(sqlite3_stmt* handle) const noexcept { sqlite3_finalize(handle); }
    };
    std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

/// A write transaction, rolled back unless `commit` succeeded.
class Transaction final {
 public:
    explicit Transaction(const Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

 private:
    const Database& database_;
    bool open_ = true;
};

}  // namespace sqlite
