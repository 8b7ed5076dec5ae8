#pragma once

#include "core/mDatabase.h"

/// Opens the catalogue on a query, hands each of its rows to `take`, and closes it. A row or a whole query
/// that fails is skipped; the first row that cannot be moved on from is the last one.
template <typename Take>
void forEachRow(const QString& sql, Take&& take) {
    openCatalogue();
    OpenRS(sql, false);
    auto rows = RsDB;
    const auto atEnd = [&rows] {
        bool end = true;  // a test that fails must not go on for ever
        skipFailure([&] { end = rows->Eof(); });
        return end;
    };
    for (bool moved = true; moved && !atEnd();) {
        skipFailure([&] { take(std::as_const(*rows)); });
        moved = skipFailure([&] { rows->MoveNext(); });
    }
    rows.reset();
    closeCatalogue();
}
