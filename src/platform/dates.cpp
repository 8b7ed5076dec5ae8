#include "platform/dates.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

QString shortDateFormat() {
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(u"yyyy"_s)) format.replace(u"yy"_s, u"yyyy"_s);
    return format;
}

QString timeFormat() {
    return u"H:mm:ss"_s;
}

}  // namespace

QString dates::toStored(const QDateTime& moment) {
    // Not by QDateTime's own formatting, which obeys the calendar of the locale and is far slower.
    const QDate date = moment.date();
    const QTime time = moment.time();
    const QLatin1Char zero('0');
    return u"%1-%2-%3 %4:%5:%6"_s.arg(date.year(), 4, 10, zero)
        .arg(date.month(), 2, 10, zero)
        .arg(date.day(), 2, 10, zero)
        .arg(time.hour(), 2, 10, zero)
        .arg(time.minute(), 2, 10, zero)
        .arg(time.second(), 2, 10, zero);
}

QDateTime dates::fromStored(QStringView stored) {
    if (stored.size() != 19 || stored[10] != u' ') return {};
    const QDate date = QDate::fromString(stored.first(10), u"yyyy-MM-dd"_s);
    const QTime time = QTime::fromString(stored.sliced(11), u"HH:mm:ss"_s);
    // The clock times that a switch to summer time leaves out are stored moments all the same: no zone
    // applies.
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

QString dates::toShown(const QDateTime& moment) {
    const bool midnight =
        moment.time().hour() == 0 && moment.time().minute() == 0 && moment.time().second() == 0;
    return midnight ? toShown(moment.date())
                    : QLocale().toString(moment, shortDateFormat() + u' ' + timeFormat());
}

QString dates::toShown(QDate date) {
    return QLocale().toString(date, shortDateFormat());
}

QDateTime dates::fromShown(const QString& shown) {
    // Date and time apart: as one local moment, the hour that a switch to summer time leaves out would be
    // refused.
    const QLocale locale;
    const QDate date = locale.toDate(shown, shortDateFormat());
    if (date.isValid()) return QDateTime(date, QTime(0, 0), Qt::UTC);
    const qsizetype gap = shown.lastIndexOf(u' ');
    const QDate day = locale.toDate(shown.left(gap), shortDateFormat());
    const QTime time = QTime::fromString(shown.mid(gap + 1), timeFormat());
    return gap > 0 && day.isValid() && time.isValid() ? QDateTime(day, time, Qt::UTC) : QDateTime();
}
