#include <QFile>

#include "catalogue/masterFixture.h"
#include "core/mDatabase.h"

using namespace Qt::StringLiterals;

using MasterListTest = MasterTest;

TEST_F(MasterListTest, AllFilmsWithANumberStandInCzechOrderWithTheirLoans) {
    EXPECT_EQ(rows(),
              QStringList({u"*9|cesta||Novák|03.02.2026||CZ Titulky"_s,
                           u"*12a|Čáp|Pohádka|Dvořák|04.02.2026 9:01:02|Stork|Neuvedeno"_s,
                           u" 100|Chata|Horor|||Hut|Neuvedeno"_s, u" 10|Žena|Drama|||Woman|Česky"_s}));
    EXPECT_EQ(counts(), u"5 2"_s);
    EXPECT_EQ(list().selectedItem().key(), u"K2"_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
    window().NactiSeznam(u"KatCisl"_s);
    EXPECT_EQ(list().itemAt(0).text() + list().itemAt(3).text(), u"109"_s);
}

TEST_F(MasterListTest, AFilmLentTwiceShowsTheLaterLoanAndCountsBoth) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (12, 2, '2026-02-06 10:00:00')");
    EXPECT_EQ(rows()[0], u"*9|cesta||Dvořák|06.02.2026 10:00:00||CZ Titulky"_s);
    EXPECT_EQ(counts(), u"5 3"_s);
}

TEST_F(MasterListTest, AFilmWithoutALanguageStopsTheListWithABox) {
    sql("UPDATE tDVD SET Jazyk=NULL WHERE DVDID=4");
    EXPECT_EQ(rows(), QStringList({u"*9|cesta||Novák|03.02.2026||CZ Titulky"_s,
                                   u"*12a|Čáp|Pohádka|Dvořák|04.02.2026 9:01:02|Stork|"_s}));
    EXPECT_EQ(outside.told(), u"Došlo k chybě:\n"_s + errors::description(94) + u"|0|Chyba číslo: 94"_s);
}

TEST_F(MasterListTest, ALoanOfAFilmThatIsNotListedEndsThePaintingSilently) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (7, 3, '2026-02-06 10:00:00')");
    EXPECT_EQ(rows().filter(u"*"_s).size(), 1);  // the loans come in the order of their films
    EXPECT_EQ(counts(), u"5 3"_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(MasterListTest, ACatalogueThatCannotBeReadIsToldOnceWithItsReason) {
    window();
    ASSERT_TRUE(QFile::resize(catalogue(), 3000));
    window().NactiSeznam(u"CZJM"_s);
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_TRUE(outside.told().startsWith(u"Došlo k chybě:\nSoubor databáze je poškozený.|"_s));
    EXPECT_EQ(counts(), u"5 2"_s);
    window().ObnovZaznam(2);  // ends, and says nothing
    EXPECT_EQ(outside.told(), u""_s);
    QFile::remove(catalogue());
    window().NactiSeznam(u"CZJM"_s);
    EXPECT_FALSE(outside.told().isEmpty());
    EXPECT_EQ(ConnDB, nullptr);
}

TEST_F(MasterListTest, AReplacedCatalogueShowsAfterTheNextRefresh) {
    window();
    const QString other = at(u"other.ddb"_s);
    ASSERT_TRUE(QFile::copy(catalogue(), other));
    sql(other, "DELETE FROM tDVD WHERE DVDID<>4");
    ASSERT_TRUE(QFile::remove(catalogue()));
    ASSERT_TRUE(QFile::rename(other, catalogue()));
    EXPECT_EQ(list().count(), 4);
    action("smnuDB_0")->trigger();
    EXPECT_EQ(rows(), QStringList(u"*12a|Čáp|Pohádka|Dvořák|04.02.2026 9:01:02|Stork|Neuvedeno"_s));
}

TEST_F(MasterListTest, ARefreshedRowFollowsItsFilmAndItsLoan) {
    window();
    list().select(list().item(u"K4"_s));
    sql("UPDATE tDVD SET CZJm='Ábel', KatCisl='77', PuvJm=NULL, Jazyk=0 WHERE DVDID=4;"
        "UPDATE tPujcky SET PDatVraceni='2026-03-01 10:00:00' WHERE P_DVDID=4;"
        "INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (7, 1, '2026-03-02 10:00:00');"
        "INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, PuvJm, Jazyk) VALUES (6, '6', 'Aa', 'z', 'p', 0)");
    window().ObnovZaznam(4);
    // In its old place, black; the original title is Null and so was left as it stood; the other loan shows
    // too.
    EXPECT_EQ(rows()[1], u" 77|Ábel|Pohádka|||Stork|Česky"_s);
    EXPECT_EQ(rows()[3], u"*10|Žena|Drama|Novák|02.03.2026 10:00:00|Woman|Česky"_s);
    EXPECT_EQ(counts(), u"5 2"_s);
    window().ObnovZaznam(6);
    EXPECT_EQ(rows().last(), u" 6|Aa|z|||p|Česky"_s);
    EXPECT_EQ(list().selectedItem().key(), u"K4"_s);
    for (const qint32 notListed : {3, 99})
        window().ObnovZaznam(notListed);
    EXPECT_EQ(list().count(), 5);
    EXPECT_TRUE(outside.boxes.isEmpty());
}
