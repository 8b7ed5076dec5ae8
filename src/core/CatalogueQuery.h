#pragma once

#include <QString>
#include <memory>

#include "platform/ado.h"

/// One operation on the catalogue: OpenDB and OpenRS when it is made, CloseRS and CloseDB when it goes out of
/// scope, also by an exception. It holds its own reference to the recordset, so its rows stay usable when
/// another operation runs in between.
class CatalogueQuery final {
 public:
    /// What happens when the catalogue cannot be opened. A query that cannot be run is skipped in either case
    /// and shows at the first use of the rows.
    enum class Failures {
        skipped,  ///< `Err` is clear after opening and after closing
        told,     ///< skipped as well, after a plain box with the reason
        thrown    ///< a failure pending in `Err` is shown by OpenDB
    };

    /// @param addNew starts a new row.
    /// @throws RuntimeError when the catalogue cannot be opened and failures are `thrown`.
    CatalogueQuery(const QString& sql, Failures failures, bool addNew = false);
    ~CatalogueQuery();
    CatalogueQuery(const CatalogueQuery&) = delete;
    CatalogueQuery& operator=(const CatalogueQuery&) = delete;

    ado::Recordset& operator*() const noexcept { return *rows_; }
    ado::Recordset* operator->() const noexcept { return rows_.get(); }

    /// False when the catalogue could not be opened.
    bool opened() const noexcept { return opened_; }

    /// Closes the rows and runs another query on the same connection.
    void reopen(const QString& sql);

    /// Closes the catalogue early, skipping failures. Using the rows afterwards fails with 3704.
    void close();

 private:
    void open(const QString& sql, bool addNew);

    Failures failures_;
    bool opened_ = true;
    std::shared_ptr<ado::Recordset> rows_;
};

/// The answer of an end test that fails.
enum class IfUnknown {
    end,  ///< the loop or branch is left
    row   ///< the body runs and finds the failure pending in `Err`
};

/// True behind the last row. A failure of the test is skipped.
bool atEnd(const ado::Recordset& rows, IfUnknown answer = IfUnknown::end);
