#include <QFile>

#include "catalogue/masterFixture.h"
#include "core/mDatabase.h"

using namespace Qt::StringLiterals;

namespace {

const QString cesta = u"*9|cesta||Novák|03.02.2026||CZ Titulky"_s;
const QString stork = u"*12a|Čáp|Pohádka|Dvořák|04.02.2026 9:01:02|Stork|Neuvedeno"_s;

}  // namespace

using MasterListTest = MasterTest;

TEST_F(MasterListTest, FilmsWithANumberAreListedInCzechOrderWithTheirLoans) {
    EXPECT_EQ(rows(), QStringList({cesta, stork, u" 100|Chata|Horor|||Hut|Neuvedeno"_s,
                                   u" 10|Žena|Drama|||Woman|Česky"_s}));
    EXPECT_EQ(counts(), u"5 2"_s);
    EXPECT_EQ(list().selectedItem().key(), u"K2"_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(MasterListTest, AFilmLentTwiceShowsTheLaterLoanAndCountsBoth) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (12, 2, '2026-02-06 10:00:00')");
    EXPECT_EQ(rows()[0], u"*9|cesta||Dvořák|06.02.2026 10:00:00||CZ Titulky"_s);
    EXPECT_EQ(counts(), u"5 3"_s);
}

TEST_F(MasterListTest, AFilmWithoutALanguageStopsLoadingWithABox) {
    sql("UPDATE tDVD SET Jazyk=NULL WHERE DVDID=4");
    EXPECT_EQ(rows(), QStringList({cesta, QString(stork).remove(u"Neuvedeno"_s)}));
    EXPECT_EQ(outside.told(), u"Došlo k chybě:\n"_s + errors::description(94) + u"|0|Chyba číslo: 94"_s);
}

TEST_F(MasterListTest, ALoanOfAnUnlistedFilmEndsThePaintingSilently) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (7, 3, '2026-02-06 10:00:00')");
    EXPECT_EQ(rows().filter(u"*"_s), QStringList(cesta));  // the loans come in the order of their films
    EXPECT_EQ(counts(), u"5 3"_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(MasterListTest, AReplacedCatalogueIsUsedAndAnUnreadableOneIsReportedOnce) {
    window();
    const QString other = at(u"other.ddb"_s);
    ASSERT_TRUE(QFile::copy(catalogue(), other));
    sql(other, "DELETE FROM tDVD WHERE DVDID<>4");
    ASSERT_TRUE(QFile::remove(catalogue()) && QFile::rename(other, catalogue()));
    EXPECT_EQ(list().count(), 4);
    action("smnuDB_0")->trigger();
    EXPECT_EQ(rows(), QStringList(stork));
    ASSERT_TRUE(QFile::resize(catalogue(), 3000));
    window().NactiSeznam(u"CZJM"_s);
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_TRUE(outside.told().startsWith(u"Došlo k chybě:\nSoubor databáze je poškozený.|"_s));
    EXPECT_EQ(counts(), u"1 1"_s);
    window().ObnovZaznam(2);  // fails silently
    EXPECT_EQ(outside.told(), u""_s);
    QFile::remove(catalogue());
    window().NactiSeznam(u"CZJM"_s);
    EXPECT_FALSE(outside.told().isEmpty());
    EXPECT_EQ(ConnDB, nullptr);
}

TEST_F(MasterListTest, ARefreshedRowShowsItsFilmAndLoan) {
    window();
    choose(u"K4"_s);
    sql("UPDATE tDVD SET CZJm='Ábel', KatCisl='77', PuvJm=NULL, Jazyk=0 WHERE DVDID=4;"
        "UPDATE tPujcky SET PDatVraceni='2026-03-01 10:00:00' WHERE P_DVDID=4;"
        "INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (7, 1, '2026-03-02 10:00:00');"
        "INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, PuvJm, Jazyk) VALUES (6, '6', 'Aa', 'z', 'p', 0)");
    for (const qint32 film : {4, 6, 3, 99})
        window().ObnovZaznam(film);
    // Null leaves the cell as it was; other loans are shown too; new films go to the end.
    EXPECT_EQ(
        rows(),
        QStringList({cesta, u" 77|Ábel|Pohádka|||Stork|Česky"_s, u" 100|Chata|Horor|||Hut|Neuvedeno"_s,
                     u"*10|Žena|Drama|Novák|02.03.2026 10:00:00|Woman|Česky"_s, u" 6|Aa|z|||p|Česky"_s}));
    EXPECT_EQ(counts(), u"5 2"_s);
    EXPECT_EQ(list().selectedItem().key(), u"K4"_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
}
