#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/DbValue.h"
#include "platform/errors.h"

/// Connections, recordsets and fields in the manner of ActiveX Data Objects, over SQLite. What fails is
/// thrown as RuntimeError with a Czech description.
namespace ado {

class Recordset;
class RowSet;
namespace detail {
class Session;
}

/// One open data file. It stays open until Close, or until neither the connection nor any recordset opened on
/// it is left.
class Connection final {
 public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Opens the file that the connection string names, in the form
    /// `Provider=…;Data Source=` path `;Jet OLEDB:Database Password=` password. User, password and options
    /// are accepted as callers give them and have no meaning here.
    /// @throws RuntimeError when the string has another form, when the file is not there, not one of ours,
    ///         damaged in its header or schema, or locked for longer than 5 seconds, or when the password is
    ///         wrong.
    void Open(const QString& connectionString, const QString& user = {}, const QString& password = {},
              int options = -1);

    /// Closes the file and every recordset still open on it.
    /// @throws RuntimeError 3704 when it is not open.
    void Close();

    bool isOpen() const noexcept { return session_ != nullptr; }

 private:
    friend class Recordset;
    std::shared_ptr<detail::Session> session_;
    std::optional<RuntimeError> refusal_;
};

/// A column of a recordset. It always means the current row of its recordset, also after that has moved on.
class Field final {
 public:
    /// The value in the current row; one that has been set and not yet stored counts.
    /// @throws RuntimeError 3704 on a closed recordset, 3021 without a current row, -2147217885 when the row
    ///         has been deleted since, and database failures.
    DbValue Value() const;

    /// Sets the value; it is stored by Recordset::Update. A text column takes numbers as text, a number
    /// column takes numeric texts as 32-bit numbers.
    /// @throws RuntimeError 13 or 6 when the column cannot hold the value, 3021 and 3704 as above. The
    ///         column then keeps what it had.
    void setValue(const DbValue& value) const;

    /// The next `length` bytes of a binary column, going on from where the last call ended and starting anew
    /// when the recordset moves. Fewer when the value ends, none at all for Null or a length of 0.
    QByteArray GetChunk(qint64 length) const;

    /// Adds bytes to a binary column. The first call after the row was positioned or stored replaces what the
    /// column held. Nothing is stored before Recordset::Update. Memory stays small whatever the length.
    void AppendChunk(QByteArrayView bytes) const;

 private:
    friend class Recordset;
    Field(std::shared_ptr<RowSet> rows, int column) : rows_(std::move(rows)), column_(column) {}
    std::shared_ptr<RowSet> rows_;
    int column_;
};

/// The rows of one SELECT, with keyset meaning: which rows there are, and in which order, is fixed at Open;
/// what they hold is read when it is asked for. Rows added through the recordset follow at the end.
///
/// Rows are met one by one, under a lock that keeps other programs from changing the file meanwhile. Only two
/// things can add or take away rows that have not been met: this recordset's own first AddNew, and another
/// recordset on the same connection. Asking for RecordCount before fixes the rows against both.
///
/// The tables met in the select list need an INTEGER PRIMARY KEY. A recordset over several tables can change
/// rows, but neither add nor delete them.
class Recordset final {
 public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Runs a SELECT on an open connection and stands on its first row. Cursor type, lock type and options
    /// are accepted as callers give them: the meaning is always keyset (1).
    /// @throws RuntimeError 3705 when the recordset is open, the connection's own failure when that did not
    ///         open, else 3704 when it is closed, and failures of the database.
    void Open(const QString& sql, Connection& connection, int cursorType = 1, int lockType = 2,
              int options = -1);

    /// Closes the recordset; what was set and not stored is lost.
    /// @throws RuntimeError 3704 when it is not open.
    void Close();

    bool isOpen() const noexcept;

    /// True behind the last row. (Named so because EOF is a macro of the C library.)
    /// @throws RuntimeError on a closed recordset: the failure that the last Open ended with, else 3704.
    bool Eof() const;

    /// Moves to the next row; values set and not yet stored are stored first.
    /// @throws RuntimeError 3021 behind the last row, 3704 when closed, database failures.
    void MoveNext();

    /// The number of rows. Exact, and counted only when it is asked for, so that adding one row to a large
    /// table does not read the table.
    qint32 RecordCount() const;

    /// The column of that name in any letter case; the first one when several tables have it. What belongs
    /// before the name (`tDVD.`) is not part of it.
    /// @throws RuntimeError 3265 when there is none, 3704 when closed.
    Field Fields(QStringView name) const;

    /// Starts a new row and stands on it. It is stored by the next Update.
    /// @throws RuntimeError 3219 over several tables, 3704 when closed.
    void AddNew();

    /// Stores what has been set in the current row, all or nothing; without anything set it stores an empty
    /// new row, or does nothing to an existing one. Afterwards the row's key can be read.
    /// @throws RuntimeError -2147217885 when the row is gone, 3704 when closed, database failures. What was
    ///         set is kept then, and a later Update tries again.
    void Update();

    /// Deletes the current row at once. `affected` must be 1, the current record.
    /// @throws RuntimeError 5 for another value, 3219 over several tables, 3021, 3704, database failures.
    void Delete(int affected = 1);

 private:
    const std::shared_ptr<RowSet>& rows() const;

    std::shared_ptr<RowSet> rows_;
    std::optional<RuntimeError> refusal_;
};

}  // namespace ado
