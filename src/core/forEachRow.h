#pragma once

#include "core/CatalogueQuery.h"

/// Runs a query on the catalogue and calls `take` for each of its rows. A failing row or query is skipped; a
/// failing move to the next row ends the loop.
template <typename Take>
void forEachRow(const QString& sql, Take&& take) {
    const CatalogueQuery rows(sql, CatalogueQuery::Failures::skipped);
    for (bool moved = true; moved && !atEnd(*rows);) {
        skipFailure([&] { take(std::as_const(*rows)); });
        moved = skipFailure([&] { rows->MoveNext(); });
    }
}
