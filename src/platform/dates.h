#pragma once

#include <QDateTime>
#include <QString>

/// Dates are local date and time, to the second, without a time zone.
namespace dates {

/// The stored form of a date: `YYYY-MM-DD HH:MM:SS`.
QString toStored(const QDateTime& moment);
/// Parses that form; invalid for any other text and for dates and times outside the calendar.
QDateTime fromStored(QStringView stored);

/// The displayed form: the locale's short date with a four-digit year and, unless the time is midnight, a
/// blank and `H:mm:ss`.
QString toShown(const QDateTime& moment);
/// The short date with a four-digit year only.
QString toShown(QDate date);
/// Parses what toShown returned under the same locale; invalid for any other text.
QDateTime fromShown(const QString& shown);

}  // namespace dates
