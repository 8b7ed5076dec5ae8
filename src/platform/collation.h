#pragma once

#include <QCollatorSortKey>
#include <QStringView>

/// Czech alphabetical order, ignoring case: č after c, ch after h, ř after r, š after s, ž after z.
namespace collation {

/// The name of the SQLite collation.
inline constexpr const char* name = "CZECH";

/// Negative, 0 or positive if `left` sorts before, with or after `right`.
int compare(QStringView left, QStringView right);

/// A key that compares in the same order, for texts that are compared many times.
QCollatorSortKey sortKey(const QString& text);

}  // namespace collation
