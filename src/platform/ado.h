#pragma once

#include <QString>
#include <memory>
#include <optional>

#include "platform/DbValue.h"
#include "platform/errors.h"

/// Connections, recordsets and fields in the style of ActiveX Data Objects, on top of SQLite. Failures are
/// thrown as RuntimeError with a Czech description; those of the file end with its path.
namespace ado {

class Recordset;
class RowSet;
namespace detail {
class Session;
}

/// An open data file. It stays open until Close, or until the connection and all its recordsets are gone.
class Connection final {
 public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Opens the file named by a connection string of the form
    /// `Provider=…;Data Source=` path `;Jet OLEDB:Database Password=` password.
    /// User, password and options are ignored.
    /// @throws RuntimeError when the string has another form, when the file is missing, not one of ours,
    ///         damaged in its header or schema, or locked for longer than 5 seconds, or when the password is
    ///         wrong.
    void Open(const QString& connectionString, const QString& user = {}, const QString& password = {},
              int options = -1);

    /// Closes the file and all its recordsets.
    /// @throws RuntimeError 3704 when it is not open.
    void Close();

    bool isOpen() const noexcept { return session_ != nullptr; }

 private:
    friend class Recordset;
    std::shared_ptr<detail::Session> session_;
    std::optional<RuntimeError> refusal_;
};

/// A column of a recordset. It always refers to the current row, even after the recordset has moved.
class Field final {
 public:
    /// The value in the current row, including one set but not yet stored.
    /// @throws RuntimeError 3704 on a closed recordset, 3021 without a current row, -2147217885 when the row
    ///         has been deleted, and database failures.
    DbValue Value() const;

    /// Sets the value; Recordset::Update stores it. A text column takes numbers as text, a number column
    /// takes numeric texts as 32-bit numbers.
    /// @throws RuntimeError 13 or 6 when the column cannot hold the value, 3021 and 3704 as above. The column
    ///         then keeps its value.
    void setValue(const DbValue& value) const;

    /// The next `length` bytes of a binary column, continuing where the last call ended and restarting when
    /// the recordset moves. Fewer at the end of the value, none for Null or a length of 0.
    QByteArray GetChunk(qint64 length) const;

    /// Appends bytes to a binary column. The first call after the row was entered or stored replaces the old
    /// value. Nothing is stored before Recordset::Update. Memory use does not grow with the length.
    void AppendChunk(QByteArrayView bytes) const;

 private:
    friend class Recordset;
    Field(std::shared_ptr<RowSet> rows, int column) : rows_(std::move(rows)), column_(column) {}
    std::shared_ptr<RowSet> rows_;
    int column_;
};

/// The rows of one SELECT as a keyset: Open fixes which rows there are and in which order; their contents are
/// read on demand. Rows added through the recordset follow at the end.
///
/// Rows are found one by one, under a lock that keeps other programs from changing the file. Only two things
/// can add or remove rows not yet found: this recordset's own first AddNew, and another recordset on the same
/// connection. Reading RecordCount first fixes the rows against both.
///
/// The tables in the select list need an INTEGER PRIMARY KEY. A recordset over several tables can change rows
/// but not add or delete them.
class Recordset final {
 public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Runs a SELECT on an open connection and moves to its first row. Cursor type, lock type and options are
    /// ignored: the cursor is always a keyset (1).
    /// @throws RuntimeError 3705 when the recordset is open, the failure of the connection's Open if that
    ///         failed, else 3704 when it is closed, and database failures.
    void Open(const QString& sql, Connection& connection, int cursorType = 1, int lockType = 2,
              int options = -1);

    /// Closes the recordset, discarding values not yet stored.
    /// @throws RuntimeError 3704 when it is not open.
    void Close();

    bool isOpen() const noexcept;

    /// True after the last row. (EOF is a macro of the C library, hence the spelling.)
    /// @throws RuntimeError on a closed recordset: the failure of the last Open, else 3704.
    bool Eof() const;

    /// Moves to the next row, storing pending values first.
    /// @throws RuntimeError 3021 after the last row, 3704 when closed, database failures.
    void MoveNext();

    /// The exact number of rows, counted on demand, so that adding one row to a large table does not read it.
    qint32 RecordCount() const;

    /// The column of that name, ignoring case; the first one if several tables have it. The name has no table
    /// prefix (`tDVD.`).
    /// @throws RuntimeError 3265 when there is none, 3704 when closed.
    Field Fields(QStringView name) const;

    /// Starts a new row and makes it current; the next Update stores it.
    /// @throws RuntimeError 3219 over several tables, 3704 when closed.
    void AddNew();

    /// Stores the pending values of the current row, all or nothing; without any it stores a new row of
    /// defaults, or does nothing to an existing row. Afterwards the key of the row can be read.
    /// @throws RuntimeError -2147217885 when the row is gone, 3704 when closed, database failures. The
    ///         pending values are kept then for another Update.
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
