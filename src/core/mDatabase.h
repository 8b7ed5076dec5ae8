#pragma once

#include <QString>
#include <memory>

#include "platform/ado.h"

/// Shared database access. An operation on the catalogue is OpenDB, OpenRS, work through a copy of `RsDB`,
/// CloseRS, CloseDB, as CatalogueQuery does it; nothing stays open between operations.

/// Path of the catalogue file, set once at start.
extern QString ActDBPath;
/// Connection string built by the last OpenDB.
extern QString ConnStr;
/// The one connection; null outside an operation.
extern std::shared_ptr<ado::Connection> ConnDB;
/// The one recordset; null outside an operation.
extern std::shared_ptr<ado::Recordset> RsDB;

/// The password of both data files.
QString databasePassword();

/// The connection string for a data file.
QString connectionString(const QString& path);

/// The record count that OpenRS returns, determined when it is read: loans are added through a SELECT of all
/// loans, which counting at once would read to the end. 0 once the recordset is closed or gone.
class OpenedCount final {
 public:
    explicit OpenedCount(std::weak_ptr<ado::Recordset> opened) : opened_(std::move(opened)) {}
    operator qint32() const;

 private:
    std::weak_ptr<ado::Recordset> opened_;
};

/// Creates the shared connection and recordset and opens the catalogue; NUL characters are removed from
/// ActDBPath first. A failure still pending in `Err` is shown in a box afterwards.
/// @throws RuntimeError when the catalogue cannot be opened.
void OpenDB();

/// Opens the shared recordset on a SELECT and, with `addNew`, starts a new row in it. Failures are skipped;
/// they show when the recordset is used.
/// @return the number of records.
OpenedCount OpenRS(const QString& sql, bool addNew);

/// Closes the shared recordset.
/// @throws RuntimeError 91 when there is none, 3704 when it is not open.
void CloseRS();

/// Closes the shared connection, skipping any failure, and resets connection and recordset to null.
void CloseDB();

/// "" for Null, else the value as text.
QString NullNaText(DbValue value);
