#include "rental/mPujcky.h"

#include <QFile>

#include "core/mDatabase.h"
#include "support/TemporaryProgram.h"
#include "support/conversions.h"

namespace {

class LoanRules : public TemporaryProgram {
 protected:
    void SetUp() override {
        sql("INSERT INTO tDVD (DVDID, CZJm) VALUES (1, 'Žena'), (2, 'cesta'), (3, 'Čáp'), (4, 'Chata'),"
            " (5, NULL), (6, 'Hory'), (7, 'Auto'), (8, 'Drak'), (9, 'Houba');"
            "INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES (7, 'Novák', '7'), (12, 'Čermák', '7'),"
            " (3, 'Chytil', '3'), (4, NULL, '4'), (5, 'cizinec', '5');"
            "INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky, PDatVraceni) VALUES"
            " (7, 2, '2026-01-02 10:20:30', '2026-01-05 08:00:00'),"
            " (7, 2, '2026-02-02 10:20:30', '2026-03-01 17:30:00'),"
            " (7, 6, '2026-01-03 10:20:30', '2026-02-01 00:00:00'), (7, 6, '2026-02-03 10:20:30', NULL),"
            " (99, 7, '2026-02-04 10:20:30', NULL), (7, 8, '2026-02-05 10:20:30', NULL),"
            " (12, 8, '2026-02-06 10:20:30', NULL), (7, 50, '2026-02-06 10:20:30', '2026-02-07 10:20:30'),"
            " (99, 1, '2026-02-06 10:20:30', '2026-02-07 10:20:30');");
    }

    static QString listed(const std::vector<ListEntry>& entries) {
        QStringList texts;
        for (const ListEntry& entry : entries)
            texts += u"%1 %2"_s.arg(entry.itemData).arg(entry.text);
        return texts.join(u", "_s);
    }
    static QString toReturn(const QString& code) {
        const auto films = filmsToReturn(code);
        return films ? listed(*films) : u"no number"_s;
    }
    /// All loans that are open or were lent or returned in March, in the order they were made.
    QString loans() const {
        return text(
            "SELECT group_concat(P_UID || '/' || P_DVDID || ' ' || PDatPujcky ||"
            " ifnull(' ' || PDatVraceni, ''), ', ') FROM (SELECT * FROM tPujcky WHERE"
            " PDatVraceni IS NULL OR PDatVraceni > '2026-03-02' ORDER BY P_ID)");
    }
};

}  // namespace

TEST_F(LoanRules, FilmsAreFreeUntilALoanIsOpenAndListedLikeCustomersInCzechOrder) {
    EXPECT_EQ(listed(customersByName()), u"5 cizinec, 12 Čermák, 3 Chytil, 7 Novák"_s);
    EXPECT_EQ(listed(freeFilms()), u"2 cesta, 3 Čáp, 9 Houba, 4 Chata, 1 Žena"_s);
    sql("UPDATE tPujcky SET PDatVraceni=NULL");
    EXPECT_EQ(listed(freeFilms()), u"3 Čáp, 9 Houba, 4 Chata"_s);
    sql("INSERT INTO tPujcky (P_DVDID) SELECT DVDID FROM tDVD");
    EXPECT_EQ(listed(freeFilms()), u""_s);
}

TEST_F(LoanRules, FilmsToReturnAreFoundByTheNumberInTheCode) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID) VALUES (-7, 3), (0, 9), (2147483647, 4), (-2147483648, 1),"
        " (7, 5)");
    expectEach(&toReturn,
               {u"7→8 Drak, 6 Hory", u"  7 →8 Drak, 6 Hory", u"007→8 Drak, 6 Hory", u"+7→8 Drak, 6 Hory",
                u"00000000000000000007→8 Drak, 6 Hory", u"-7→3 Čáp", u"12→8 Drak", u"99→7 Auto", u"0→9 Houba",
                u"2147483647→4 Chata", u"-2147483648→1 Žena", u"1→", u"4294967303→", u"-2147483649→"});
    ConnStr.clear();
    for (const QString& code :
         {u""_s,        u" "_s,   u"7a"_s,  u"7,5"_s,    u"7.0"_s,   u"1 or 1=1"_s, u"7)--"_s, u"+"_s,
          u"-"_s,       u"--1"_s, u"+-1"_s, u"- 7"_s,    u"\t7"_s,   u"7\t"_s,      u"7\n"_s,  u"7 8"_s,
          u"7\u00a0"_s, u"0x7"_s, u"7e1"_s, u"\u0667"_s, u"P_UID"_s, u"7\0"_s}) {
        EXPECT_EQ(toReturn(code), u"no number"_s) << code.toStdString();
    }
    EXPECT_EQ(ConnStr, u""_s);  // the database was not opened
}

TEST_F(LoanRules, LendingAddsALoanEvenToALentFilmAndReturningClosesTheFirstOneOfAnybody) {
    const QString others = u"7/6 2026-02-03 10:20:30, 99/7 2026-02-04 10:20:30, "_s;
    const QString second = u", 12/8 2026-02-06 10:20:30"_s;
    EXPECT_EQ(loans(), others + u"7/8 2026-02-05 10:20:30"_s + second);
    VratDVD(12, 8);
    QString expected = others + u"7/8 2026-02-05 10:20:30 2026-03-09 08:05:03"_s + second;
    EXPECT_EQ(loans(), expected);
    outside.moment = QDateTime(QDate(2026, 3, 10), QTime(0, 0));
    PujcDVD(-2147483648, 8);
    expected += u", -2147483648/8 2026-03-10 00:00:00"_s;
    EXPECT_EQ(loans(), expected);
    for (const int withoutOpenLoan : {2, 3, 1000})
        VratDVD(7, withoutOpenLoan);
    EXPECT_EQ(loans(), expected);
    VratDVD(0, 8);
    EXPECT_EQ(loans(), expected.replace(second, second + u" 2026-03-10 00:00:00"_s));
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky"), 10);
}

TEST_F(LoanRules, TheHistoryHasTheReturnedLoansOfExistingFilmsLatestReturnFirst) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatVraceni) VALUES (7, 5, '2026-02-08 10:00:00')");
    EXPECT_EQ(history(7),
              u"cesta vráceno : 01.03.2026 17:30:00\r\nHory vráceno : 01.02.2026\r\ncesta vráceno : "
              "05.01.2026 8:00:00\r\n"_s);
    for (const int withoutLine : {12, 99, 0, 1})  // only an open loan; no such customer
        EXPECT_EQ(history(withoutLine), u""_s);
}

TEST_F(LoanRules, NothingIsStoredInAMissingCatalogue) {
    const QString before = loans();
    const QString away = at(u"away"_s);
    ASSERT_TRUE(QFile::rename(catalogue(), away));
    EXPECT_EQ(failureOf([] { PujcDVD(7, 6); }), errors::database);
    EXPECT_EQ(failureOf([] { VratDVD(7, 6); }), errors::database);
    EXPECT_EQ(listed(freeFilms()) + toReturn(u"7"_s) + history(7) + listed(customersByName()), u""_s);
    EXPECT_FALSE(Err.pending());
    ASSERT_TRUE(QFile::rename(away, catalogue()));  // nor was an empty one made
    EXPECT_EQ(loans(), before);
    VratDVD(7, 6);  // a failure does not stop the next operation
    EXPECT_NE(loans(), before);
}
