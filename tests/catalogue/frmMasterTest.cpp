#include <QFile>
#include <QMenu>
#include <QToolButton>

#include "catalogue/masterFixture.h"
#include "core/mDatabase.h"
#include "core/mFunction.h"
#include "core/mVerze.h"

namespace {

const QString cesta = u"*9|cesta||Novák|03.02.2026||CZ Titulky"_s;
const QString stork = u"*12a|Čáp|Pohádka|Dvořák|04.02.2026 9:01:02|Stork|Neuvedeno"_s;

using FrmMasterTest = MasterTest;

}  // namespace

TEST_F(FrmMasterTest, FilmsWithANumberAreListedInCzechOrderWithTheirLoans) {
    EXPECT_EQ(rows(), QStringList({cesta, stork, u" 100|Chata|Horor|||Hut|Neuvedeno"_s,
                                   u" 10|Žena|Drama|||Woman|Česky"_s}));
    EXPECT_EQ(counts(), u"5 2"_s);
    EXPECT_EQ(list().selectedItem().key(), u"K2"_s);
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (12, 2, '2026-02-06 10:00:00')");
    window().NactiSeznam(u"CZJM"_s);
    EXPECT_EQ(rows()[0] + counts(), u"*9|cesta||Dvořák|06.02.2026 10:00:00||CZ Titulky5 3"_s);
}

TEST_F(FrmMasterTest, AFilmWithoutALanguageStopsLoadingWithABox) {
    sql("UPDATE tDVD SET Jazyk=NULL WHERE DVDID=4");
    EXPECT_EQ(rows(), QStringList({cesta, QString(stork).remove(u"Neuvedeno"_s)}));
    EXPECT_EQ(outside.told(), u"Došlo k chybě:\n"_s + errors::description(94) + u"|0|Chyba číslo: 94"_s);
}

TEST_F(FrmMasterTest, ALoanOfAnUnlistedFilmEndsThePaintingSilently) {
    sql("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (7, 3, '2026-02-06 10:00:00')");
    EXPECT_EQ(rows().filter(u"*"_s), QStringList(cesta));  // the loans come in the order of their films
    EXPECT_EQ(counts(), u"5 3"_s);
}

TEST_F(FrmMasterTest, AReplacedCatalogueIsUsedAndAnUnreadableOneIsReportedOnce) {
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
    const QString damaged = u"Došlo k chybě:\nSoubor databáze je poškozený.\n\n"_s + catalogue() + u'|';
    EXPECT_TRUE(outside.told().startsWith(damaged));
    EXPECT_EQ(counts(), u"1 1"_s);
    window().ObnovZaznam(2);  // fails silently
    EXPECT_EQ(outside.told(), u""_s);
    QFile::remove(catalogue());
    window().NactiSeznam(u"CZJM"_s);
    EXPECT_FALSE(outside.told().isEmpty());
    EXPECT_EQ(ConnDB, nullptr);
}

TEST_F(FrmMasterTest, ARefreshedRowShowsItsFilmAndLoan) {
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
}

TEST_F(FrmMasterTest, OnlyCommandsThatNeedARowAreDisabledInAnEmptyList) {
    const QStringList needRow = {u"KeyEdit"_s,       u"KeyPujcitVratit"_s, u"mnuListItem_0"_s,
                                 u"mnuListItem_1"_s, u"mnuListItem_2"_s,   u"mnuListItem_4"_s};
    for (const bool empty : {false, true}) {
        int commands = 0;
        for (const QAction* entry : window().findChildren<QAction*>()) {
            if (entry->isSeparator() || entry->menu() != nullptr || entry->objectName().isEmpty()) continue;
            EXPECT_EQ(entry->isEnabled(), !empty || !needRow.contains(entry->objectName()))
                << entry->objectName().toStdString();
            ++commands;
        }
        EXPECT_GE(commands, 27);
        closeWindow();
        sql("DELETE FROM tDVD");
    }
    for (int column = 0; column < 7; ++column)
        emit list().columnClicked(column);
    EXPECT_EQ(counts(), u"0 0"_s);
}

TEST_F(FrmMasterTest, ButtonsHaveIconsTheListFillsTheWindowAndTheRightButtonOpensItsMenu) {
    EXPECT_EQ(window().windowTitle(), u"Brem DVD Kalvéra "_s + verze::text());
    for (const QToolButton* button : window().findChildren<QToolButton*>()) {
        EXPECT_TRUE(button->text().isEmpty() || !button->icon().pixmap(24).isNull())
            << button->text().toStdString();
    }
    for (const QSize size : {QSize(1000, 700), QSize(600, 300)}) {
        window().resize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(list().parentWidget()->rect().bottomRight() - list().geometry().bottomRight(),
                  QPoint(4, 1));
    }
    const QPoint second = list().visualRect(list().model()->index(1, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::RightButton, {}, second);
    EXPECT_TRUE(control<QMenu>(window(), "hidMenuListItem").isVisible());
    EXPECT_EQ(list().selectedItem().row(), 1);
    control<QMenu>(window(), "hidMenuListItem").close();
}

TEST_F(FrmMasterTest, SortCommandsReloadTheListAndBackupCommandsDoNothing) {
    const QByteArray before = content(catalogue()) + content(pictures());
    action("SortKatNum")->trigger();
    QTest::mouseClick(&control<QToolButton>(window(), "SortCZNameButton"), Qt::LeftButton, {}, {8, 8});
    for (const auto& [command, first] :
         {std::pair("mnuBackup_0", u"9"_s), std::pair("SortKatNum", u"10"_s),
          std::pair("mnuBackup_1", u"10"_s), std::pair("SortCZNameEntry", u"9"_s)}) {
        action(command)->trigger();
        EXPECT_EQ(list().itemAt(0).text(), first) << command;
    }
    EXPECT_EQ(content(catalogue()) + content(pictures()), before);
}

TEST_F(FrmMasterTest, DamagedColumnWidthsAreReportedOnceAndReplacedOnClosing) {
    const std::tuple<const char16_t*, qint32, const char16_t*> cases[] = {
        {u"100|200|x|400|500|600|700|", errors::typeMismatch, u"100|200|"},
        {u"100|200", errors::subscriptOutOfRange, u"100|200|"},
        {u"100||300|400|500|600|700|", errors::typeMismatch, u"100|2500|"},
        {u"-5|200|300|400|500|600|700|", errors::invalidPropertyValue, u"900|2500|"},
        {u"2147483647|2|3|4|5|6|7|", errors::invalidPropertyValue, u"900|2500|"},
        {u"99999999999|2|3|4|5|6|7|", errors::overflow, u"900|2500|"}};
    for (const auto& [stored, failure, applied] : cases) {
        UlozNastaveni(u"ColSie"_s, QString::fromUtf16(stored));
        window().close();
        EXPECT_EQ(CtiNastaveni(u"ColSie"_s, u""_s),
                  QString::fromUtf16(applied) + u"1200|1200|1000|1440|1440|"_s);
        EXPECT_EQ(outside.told(), u"Chyba :"_s + errors::description(failure) +
                                      u"\n\nfrmMaster/Sub:SetColSizeStr|16|Chyba aplikace:"_s);
        closeWindow();
    }
}
