#include "platform/dates.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <ctime>

#include "support/printers.h"

using namespace Qt::StringLiterals;

namespace {

/// A machine in Prague with the Czech locale.
class Dates : public testing::Test {
 public:
    Dates(const Dates&) = delete;
    Dates& operator=(const Dates&) = delete;

 protected:
    Dates() {
        QLocale::setDefault(QLocale(u"cs_CZ"_s));
        setZone("CET-1CEST,M3.5.0,M10.5.0/3");
    }
    ~Dates() override {
        QLocale::setDefault(locale_);
        setZone(zone_);
    }

    static QDateTime moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
        return {QDate(year, month, day), QTime(hour, minute, second), Qt::UTC};
    }

 private:
    static void setZone(const QByteArray& zone) {
        zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
        tzset();
    }

    QLocale locale_;
    QByteArray zone_ = qgetenv("TZ");
};

}  // namespace

TEST_F(Dates, StoredFormIsReadBack) {
    QLocale::setDefault(QLocale(u"ar_EG"_s));  // with digits of its own
    const std::pair<QDateTime, QString> cases[] = {
        {moment(2026, 3, 9, 8, 5, 3), u"2026-03-09 08:05:03"_s},
        {moment(2024, 2, 29), u"2024-02-29 00:00:00"_s},
        {moment(1999, 12, 31, 23, 59, 59), u"1999-12-31 23:59:59"_s},
        {moment(2026, 3, 29, 2, 30), u"2026-03-29 02:30:00"_s}};  // left out by the clocks
    for (const auto& [moment, stored] : cases) {
        EXPECT_EQ(dates::toStored(moment), stored);
        EXPECT_TRUE(dates::fromStored(stored) == moment) << stored.toStdString();
    }
    EXPECT_EQ(dates::toStored(QDateTime(QDate(2026, 3, 9), QTime(8, 5, 3, 999))), u"2026-03-09 08:05:03"_s);
}

TEST_F(Dates, DamagedStoredTextIsNoDate) {
    for (const QStringView stored :
         {u"", u"2026-03-09", u"2026-03-09T08:05:03", u"2026-03-09 8:05:03", u"2026-03-09 08:05:60",
          u"2026-03-09 24:00:00", u"2026-02-29 08:05:03", u"2026-13-01 08:05:03", u"2026-03-09 08:05:03 ",
          u" 026-03-09 08:05:03", u"2026-03- 9 08:05:03", u"2026-03-09 08: 5:03", u"09.03.2026 08:05:03",
          u"2026-03-09 08:05:0x", u"0000-00-00 00:00:00"}) {
        EXPECT_FALSE(dates::fromStored(stored).isValid()) << stored.toString().toStdString();
    }
}

TEST_F(Dates, ShownTextFollowsTheLocaleAndIsReadBack) {
    const std::pair<QString, QString> cases[] = {{u"cs_CZ"_s, u"09.03.2026"_s},
                                                 {u"de_DE"_s, u"09.03.2026"_s},
                                                 {u"en_US"_s, u"3/9/2026"_s},
                                                 {u"C"_s, u"9 Mar 2026"_s}};
    for (const auto& [locale, date] : cases) {
        SCOPED_TRACE(locale.toStdString());
        QLocale::setDefault(QLocale(locale));
        EXPECT_EQ(dates::toShown(moment(2026, 3, 9, 8, 5, 3)), date + u" 8:05:03"_s);
        EXPECT_EQ(dates::toShown(moment(2026, 3, 9, 0, 0, 1)), date + u" 0:00:01"_s);
        EXPECT_EQ(dates::toShown(moment(2026, 3, 9).addMSecs(400)), date);
        EXPECT_EQ(dates::toShown(QDate(2026, 3, 9)), date);
        for (const QDateTime& shown :
             {moment(2026, 3, 29, 2, 30), moment(2026, 3, 9), moment(2026, 3, 9, 8, 5, 3),
              moment(1926, 10, 1, 13), moment(2069, 12, 31, 23, 59, 59)}) {
            const QString text = dates::toShown(shown);
            EXPECT_TRUE(dates::fromShown(text) == shown) << text.toStdString();
        }
    }
}

TEST_F(Dates, OtherTextIsNoShownDate) {
    for (const QStringView shown :
         {u"", u"31.02.2026", u"2026-03-09", u"3/9/2026", u"09.03.26", u"8:05:03", u"09.03.2026 25:00:00",
          u"09.03.2026 8:05", u"09.03.2026 dnes", u"dnes"}) {
        EXPECT_FALSE(dates::fromShown(shown.toString()).isValid()) << shown.toString().toStdString();
    }
}
