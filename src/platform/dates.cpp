#include "platform/dates.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

/// Cached for each locale, since long lists show many dates.
const QString& shortDateFormat() {
    static QLocale locale = QLocale::c();
    static QString format;
    if (format.isEmpty() || locale != QLocale()) {
        locale = QLocale();
        format = locale.dateFormat(QLocale::ShortFormat);
        if (!format.contains(u"yyyy"_s)) format.replace(u"yy"_s, u"yyyy"_s);
    }
    return format;
}

QString timeFormat() {
    return u"H:mm:ss"_s;
}

}  // namespace

QString dates::toStored(const QDateTime& moment) {
    // QDateTime's own formatting uses the calendar of the locale and is far slower.
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
    // By hand as well: long lists parse many dates.
    constexpr QStringView form = u"0000-00-00 00:00:00";
    if (stored.size() != form.size()) return {};
    for (qsizetype at = 0; at < form.size(); ++at) {
        const bool digit = stored[at] >= u'0' && stored[at] <= u'9';
        if (form[at] == u'0' ? !digit : stored[at] != form[at]) return {};
    }
    const auto number = [stored](qsizetype at, qsizetype length) {
        int value = 0;
        for (const QChar digit : stored.sliced(at, length))
            value = 10 * value + (digit.unicode() - u'0');
        return value;
    };
    const QDate date(number(0, 4), number(5, 2), number(8, 2));
    const QTime time(number(11, 2), number(14, 2), number(17, 2));
    // UTC, as times skipped by daylight saving are valid stored times.
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

QString dates::toShown(const QDateTime& moment) {
    const QTime time = moment.time();
    if (time.hour() == 0 && time.minute() == 0 && time.second() == 0) return toShown(moment.date());
    return toShown(moment.date()) + u' ' + time.toString(timeFormat());
}

QString dates::toShown(QDate date) {
    return QLocale().toString(date, shortDateFormat());
}

QDateTime dates::fromShown(const QString& shown) {
    // Date and time separately: as one local date-time, the hour skipped by daylight saving would be invalid.
    const QLocale locale;
    const QDate date = locale.toDate(shown, shortDateFormat());
    if (date.isValid()) return QDateTime(date, QTime(0, 0), Qt::UTC);
    const qsizetype gap = shown.lastIndexOf(u' ');
    const QDate day = locale.toDate(shown.left(gap), shortDateFormat());
    const QTime time = QTime::fromString(shown.mid(gap + 1), timeFormat());
    return gap > 0 && day.isValid() && time.isValid() ? QDateTime(day, time, Qt::UTC) : QDateTime();
}
