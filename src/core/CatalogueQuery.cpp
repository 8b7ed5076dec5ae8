#include "core/CatalogueQuery.h"

#include "core/mDatabase.h"
#include "platform/Outside.h"

CatalogueQuery::CatalogueQuery(const QString& sql, Failures failures, bool addNew) : failures_(failures) {
    if (failures_ == Failures::thrown) {
        OpenDB();
    } else {
        Err.Clear();
        opened_ = skipFailure([] { OpenDB(); });
        if (!opened_ && failures_ == Failures::told) MsgBox(Err.Description());
    }
    open(sql, addNew);
}

CatalogueQuery::~CatalogueQuery() {
    rows_.reset();
    close();
}

void CatalogueQuery::reopen(const QString& sql) {
    rows_.reset();
    skipFailure([] { CloseRS(); });
    open(sql, false);
}

void CatalogueQuery::open(const QString& sql, bool addNew) {
    OpenRS(sql, addNew);
    Err.Clear();
    rows_ = RsDB;
}

void CatalogueQuery::close() {
    skipFailure([] { CloseRS(); });
    CloseDB();
    // Nothing is left pending that a later OpenDB would show as its own.
    if (failures_ != Failures::thrown) Err.Clear();
}

bool atEnd(const ado::Recordset& rows, IfUnknown answer) {
    bool end = answer == IfUnknown::end;
    skipFailure([&] { end = rows.Eof(); });
    return end;
}
