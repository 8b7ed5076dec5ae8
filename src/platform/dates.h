#pragma once

#include <QDateTime>
#include <QString>

/// Dates are the machine's local date and time, to the second, with no zone.
namespace dates {

/// The form in which a data file holds a date: `YYYY-MM-DD HH:MM:SS`.
QString toStored(const QDateTime& moment);
/// Reads that form; invalid when the text is in another one or names no real moment.
QDateTime fromStored(QStringView stored);

/// The form in which the user sees a date: the locale's short date with a four-digit year and, unless the
/// time is midnight, a blank and `H:mm:ss`.
QString toShown(const QDateTime& moment);
/// The short date with a four-digit year alone.
QString toShown(QDate date);
/// Reads what toShown wrote under the same locale; invalid for any other text.
QDateTime fromShown(const QString& shown);

}  // namespace dates
