#pragma once

#include <QCollatorSortKey>
#include <QStringView>

/// Czech alphabetical order with letter case ignored: č after c, ch after h, ř after r, š after s, ž after z.
namespace collation {

/// The name under which a connection knows this order.
inline constexpr const char* name = "CZECH";

/// Less than, equal to or greater than 0, as `left` stands before, with or behind `right`.
int compare(QStringView left, QStringView right);

/// A key whose comparison gives the same order: worth making where a text is compared many times.
QCollatorSortKey sortKey(const QString& text);

}  // namespace collation
