#include <ctime>
#include <limits>

#include "platform/dates.h"
#include "support/TemporaryProgram.h"

namespace {

/// The Czech locale in the time zone of Prague.
class Dates : public TemporaryProgram {
 protected:
    void SetUp() override { setZone("CET-1CEST,M3.5.0,M10.5.0/3"); }
    void TearDown() override { setZone(zone_); }

    static QDateTime moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
        return {QDate(year, month, day), QTime(hour, minute, second), Qt::UTC};
    }

 private:
    static void setZone(const QByteArray& zone) {
        zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
        tzset();
    }

    const QByteArray zone_ = qgetenv("TZ");
};

using Value = TemporaryProgram;

QString outcome(const std::function<QString()>& work) {
    QString result;
    const qint32 failure = failureOf([&] { result = work(); });
    return failure == 0 ? result : u"failure %1"_s.arg(failure);
}

}  // namespace

TEST_F(Dates, StoredFormIsReadBack) {
    QLocale::setDefault(QLocale(u"ar_EG"_s));  // with digits of its own
    const std::pair<QDateTime, QString> cases[] = {
        {moment(2026, 3, 9, 8, 5, 3).addMSecs(999), u"2026-03-09 08:05:03"_s},
        {moment(2024, 2, 29), u"2024-02-29 00:00:00"_s},
        {moment(1999, 12, 31, 23, 59, 59), u"1999-12-31 23:59:59"_s},
        {moment(2026, 3, 29, 2, 30), u"2026-03-29 02:30:00"_s}};  // skipped by the clocks
    for (const auto& [moment, stored] : cases) {
        EXPECT_EQ(dates::toStored(moment), stored);
        EXPECT_EQ(dates::fromStored(stored).toSecsSinceEpoch(), moment.toSecsSinceEpoch());
    }
}

TEST_F(Dates, ShownFormFollowsTheLocaleAndIsReadBack) {
    const std::pair<QString, QString> cases[] = {
        {u"cs_CZ"_s, u"09.03.2026"_s}, {u"en_US"_s, u"3/9/2026"_s}, {u"C"_s, u"9 Mar 2026"_s}};
    for (const auto& [locale, date] : cases) {
        SCOPED_TRACE(locale.toStdString());
        QLocale::setDefault(QLocale(locale));
        EXPECT_EQ(dates::toShown(moment(2026, 3, 9, 8, 5, 3)), date + u" 8:05:03"_s);
        EXPECT_EQ(dates::toShown(moment(2026, 3, 9, 0, 0, 1)), date + u" 0:00:01"_s);
        EXPECT_EQ(dates::toShown(moment(2026, 3, 9).addMSecs(400)), date);
        EXPECT_EQ(dates::toShown(QDate(2026, 3, 9)), date);
        for (const QDateTime& shown : {moment(2026, 3, 29, 2, 30), moment(2026, 3, 9),
                                       moment(1926, 10, 1, 13), moment(2069, 12, 31, 23, 59, 59)})
            EXPECT_TRUE(dates::fromShown(dates::toShown(shown)) == shown) << shown.date().year();
    }
}

TEST_F(Dates, OtherTextIsNoDate) {
    for (const QString& stored :
         u"|2026-03-09|2026-03-09T08:05:03|2026-03-09 8:05:03|2026-03-09 08:05:60|2026-02-29 08:05:03|"
         "2026-03-09 08:05:03 | 026-03-09 08:05:03|2026-03-09 08: 5:03|0000-00-00 00:00:00"_s.split(u'|'))
        EXPECT_FALSE(dates::fromStored(stored).isValid()) << stored.toStdString();
    for (const QString& shown :
         u"|31.02.2026|2026-03-09|3/9/2026|09.03.26|8:05:03|09.03.2026 25:00:00|09.03.2026 8:05|"
         "09.03.2026 dnes|dnes"_s.split(u'|'))
        EXPECT_FALSE(dates::fromShown(shown).isValid()) << shown.toStdString();
}

TEST_F(Value, IsTakenAsTextAndWholeNumberOrRefused) {
    const QDateTime moment(QDate(2026, 3, 9), QTime(8, 5, 3), Qt::UTC);
    const QByteArray bytes("\0\xFF", 2);
    const std::tuple<DbValue, QString, QString> cases[] = {
        {DbValue(), u"failure 94"_s, u"failure 94"_s},
        {moment, u"09.03.2026 8:05:03"_s, u"failure 13"_s},
        {bytes, u"failure 13"_s, u"failure 13"_s},
        {u" 3,5 "_s, u" 3,5 "_s, u"4"_s},
        {u"3.5"_s, u"3.5"_s, u"failure 13"_s},
        {u""_s, u""_s, u"failure 13"_s},
        {u"99999999999"_s, u"99999999999"_s, u"failure 6"_s},
        {qint32{-1234567}, u"-1234567"_s, u"-1234567"_s},
        {qint64{2147483648}, u"2147483648"_s, u"failure 6"_s},
        {std::numeric_limits<qint64>::min(), u"-9223372036854775808"_s, u"failure 6"_s},
        {-1234567.5, u"-1234567,5"_s, u"-1234568"_s},
        {2.5, u"2,5"_s, u"2"_s},
        {-20000000.0, u"-20000000"_s, u"-20000000"_s},
        {0.0001, u"0,0001"_s, u"0"_s},
        {2147483646.5, u"2147483646,5"_s, u"2147483646"_s},
        {2147483647.5, u"2147483647,5"_s, u"failure 6"_s}};
    for (const auto& [each, text, number] : cases) {
        SCOPED_TRACE(text.toStdString());
        const DbValue& value = each;
        EXPECT_EQ(outcome([&] { return value.toText(); }), text);
        EXPECT_EQ(outcome([&] { return QString::number(value.toLong()); }), number);
        const qint32 other = value.isNull() ? errors::invalidNull : errors::typeMismatch;
        EXPECT_EQ(failureOf([&] { value.toDate(); }), value == DbValue(moment) ? 0 : other);
        EXPECT_EQ(failureOf([&] { value.toBytes(); }), value == DbValue(bytes) ? 0 : other);
    }
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double large : {-infinite, infinite - infinite})
        EXPECT_EQ(failureOf([large] { DbValue(large).toLong(); }), errors::overflow);
    EXPECT_TRUE(DbValue(moment).toDate() == moment);
    EXPECT_EQ(DbValue(bytes).toBytes(), bytes);
}
