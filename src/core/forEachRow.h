#pragma once

#include "core/CatalogueQuery.h"

/// Opens the catalogue on a query, hands each of its rows to `take`, and closes it. A row or a whole query
/// that fails is skipped; the first row that cannot be moved on from is the last one.
template <typename Take>
void forEachRow(const QString& sql, Take&& take) {
    const CatalogueQuery rows(sql, CatalogueQuery::Failures::skipped);
    for (bool moved = true; moved && !atEnd(*rows);) {
        skipFailure([&] { take(std::as_const(*rows)); });
        moved = skipFailure([&] { rows->MoveNext(); });
    }
}
