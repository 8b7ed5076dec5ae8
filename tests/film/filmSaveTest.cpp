#include <sqlite3.h>

#include "core/mDatabase.h"
#include "film/editorFixture.h"

using namespace Qt::StringLiterals;

namespace {

int commits = 0;

/// Counts the transactions of every connection that is opened while it lives, by SQLite's own trace.
class CommitCounter {
 public:
    CommitCounter() {
        commits = 0;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&watch));
    }
    ~CommitCounter() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&watch)); }
    CommitCounter(const CommitCounter&) = delete;
    CommitCounter& operator=(const CommitCounter&) = delete;

 private:
    static int watch(sqlite3* handle, char**, const void*) {
        return sqlite3_trace_v2(
            handle, SQLITE_TRACE_STMT,
            [](unsigned, void*, void*, void* sql) {
                if (qstrcmp(static_cast<const char*>(sql), "COMMIT") == 0) ++commits;
                return 0;
            },
            nullptr);
    }
};

class FilmSaveTest : public EditorTest {};

}  // namespace

TEST_F(FilmSaveTest, ANewFilmLeftAsItIsGetsTheUsualValues) {
    open(0);
    const CommitCounter counter;
    press("cmdSave");
    EXPECT_EQ(editor().Vysledek, 1);
    EXPECT_EQ(editor().IDFilmu, 1);
    EXPECT_FALSE(editor().isVisible());
    EXPECT_EQ(row(1), u"1;1;;;;1;;0;;;;;1;;;N|N|N|N|N;N|N|N|N|N|N|N|N|N;N|N|N|N|N|N|N;0;0"_s);
    EXPECT_EQ(commits, 3);  // the empty row, the columns, the number
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FilmSaveTest, EveryControlReachesItsColumnAndComesBack) {
    open(0);
    type("txtKatalog", u" 77a"_s);
    type("txtCZName", u"Čáp & <b>\"rak\"</b>"_s);
    type("txtPuvName", u"Stork"_s);
    type("txtZanr", u"Drama, Krimi"_s);
    type("txtDisk", u"3"_s);
    control<QPlainTextEdit>("txtPopis").setPlainText(u"první\ndruhý\u00A0řádek"_s);
    control<QRadioButton>("optJazyk_1").click();
    type("txtStat", u"Česko"_s);
    type("txtRezie", QString(36, u'r'));
    type("txtDelka", u"118 min."_s);
    type("txtRok", u"1999"_s);
    control<QComboBox>("cboOddel").setCurrentIndex(2);
    control<QPlainTextEdit>("txtHerci").setPlainText(u"A\nB"_s);
    control<QPlainTextEdit>("txtPozn").setPlainText(u"pozn"_s);
    for (const char* box :
         {"chkMenu_0", "chkMenu_1", "chkMenu_4", "chkSound_0", "chkSound_2", "chkTitle_6"}) {
        control<QCheckBox>(box).click();
    }
    const CommitCounter counter;
    press("cmdSave");
    EXPECT_EQ(commits, 2);
    const QString saved =
        u"1; 77a;Čáp & <b>\"rak\"</b>;Stork;Drama, Krimi;3;první\r\ndruhý\u00A0řádek;1;Česko;"_s +
        QString(35, u'r') + u";118;1999;3;A\r\nB;pozn;A|A|N|N|A;A|N|A|N|N|N|N|N|N;N|N|N|N|N|N|A;0;0"_s;
    EXPECT_EQ(row(1), saved);

    open(1);
    EXPECT_EQ(control<QPlainTextEdit>("txtPopis").blockCount(), 2);
    EXPECT_EQ(control<QComboBox>("cboOddel").currentText(), u"Seriály"_s);
    press("cmdSave");
    EXPECT_EQ(row(1), saved);
}

TEST_F(FilmSaveTest, ATextThatItsBoxCannotShowIsKeptUntilTheUserChangesIt) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, PuvJm, Obsah) VALUES (1, '1', 'dva' || char(10) || 'řádky', "
        "hex(zeroblob(20000)), 'a' || char(10) || 'b')");
    const QString before = text("SELECT CZJm || PuvJm || Obsah FROM tDVD");
    open(1);
    EXPECT_EQ(typed("txtPuvName").size(), 40000);
    press("cmdSave");
    EXPECT_EQ(text("SELECT CZJm || PuvJm || Obsah FROM tDVD"), before);
    open(1);
    control<QPlainTextEdit>("txtPopis").setPlainText(u"a\nc"_s);
    press("cmdSave");
    EXPECT_EQ(text("SELECT Obsah FROM tDVD"), u"a\r\nc"_s);
}

TEST_F(FilmSaveTest, WhatAColumnCannotTakeLeavesTheRestOfTheRowWritten) {
    sql("INSERT INTO tDVD (DVDID, CZJm, DiskPocet, Oddel_ID, Jazyk, Titulky) VALUES (5, 'Old', 4, 99, 7, "
        "'A|A')");
    open(5);
    EXPECT_EQ(control<QComboBox>("cboOddel").currentIndex(), -1);
    EXPECT_EQ(control<QComboBox>("cboOddel").currentText() + typed("txtDisk") + typed("txtKatalog"), u"4"_s);
    EXPECT_TRUE(control<QRadioButton>("optJazyk_0").isChecked());
    for (const QString& disks : {u"dva"_s, u""_s, u"99999999999"_s}) {
        open(5);
        type("txtDisk", disks);
        type("txtCZName", u"New"_s + disks);
        control<QComboBox>("cboOddel").lineEdit()->clear();
        QTest::keyClicks(control<QComboBox>("cboOddel").lineEdit(), u"neco"_s);
        press("cmdSave");
        EXPECT_EQ(row(5),
                  u"5;5;New"_s + disks + u";;;4;;0;;;;;99;;;N|N|N|N|N;N|N|N|N|N|N|N|N|N;A|A|N|N|N|N|N;0;0"_s);
    }
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FilmSaveTest, AFilmThatIsGoneIsToldOnceAndStillEndsAsSaved) {
    sql("INSERT INTO tDVD (DVDID, CZJm) VALUES (5, 'Five'), (6, 'Six')");
    const QString told = u"Záznam nenalezen! (cmdSAVE,frmDVD)|16|Chyba aplikace"_s;
    open(6);
    sql("DELETE FROM tDVD WHERE DVDID=6");
    type("txtCZName", u"Zmizelý"_s);
    press("cmdSave");
    EXPECT_EQ(outside.told(), told);
    EXPECT_EQ(editor().Vysledek, 1);
    EXPECT_EQ(editor().IDFilmu, 6);
    EXPECT_EQ(number("SELECT count(*) FROM tDVD"), 1);
    open(6);
    EXPECT_EQ(outside.told(), told);
    EXPECT_EQ(typed("txtDisk"), u"1"_s);
}

TEST_F(FilmSaveTest, CancellingWritesNothing) {
    sql("INSERT INTO tDVD (DVDID, CZJm) VALUES (5, 'Five')");
    const QByteArray before = content(catalogue());
    open(5);
    type("txtCZName", u"Jinak"_s);
    press("cmdStorno");
    EXPECT_EQ(editor().Vysledek, 2);
    open(0);
    editor().close();
    EXPECT_EQ(editor().Vysledek, 0);
    EXPECT_EQ(content(catalogue()), before);
}

TEST_F(FilmSaveTest, PicturesAreStoredWithTheFilmAndKeepTheirKeys) {
    outside.files = {picture(u"obal.png"_s, "PNG"), picture(u"nahled.jpeg"_s)};
    open(0);
    press("cmdOpenObalPic");
    press("cmdOpenNahledPic");
    EXPECT_TRUE(frame(0).hasPicture());
    {
        const CommitCounter counter;
        press("cmdSave");
        EXPECT_EQ(commits, 7);  // five of the film, one for each picture
    }
    EXPECT_TRUE(row(1).endsWith(u";1;2"_s)) << row(1).toStdString();

    open(1);
    EXPECT_TRUE(frame(0).hasPicture() && frame(1).hasPicture());
    EXPECT_EQ(control<QLabel>("lblNahled").text(), folder() + u"/data/nahled.peg"_s);
    EXPECT_EQ(content(u"data/obal.png"_s), content(u"obal.png"_s));
    press("cmdSave");
    EXPECT_TRUE(row(1).endsWith(u";1;2"_s));

    open(1);
    press("cmdOpenObalPic");  // cancelled: takes the picture away
    press("cmdSave");
    EXPECT_TRUE(row(1).endsWith(u";0;2"_s));
    EXPECT_FALSE(open(1).findChild<ImageFrame*>(u"imgObalDesk_0"_s)->hasPicture());
    outside.files = {picture(u"jiny.jpg"_s)};
    press("cmdOpenObalPic");
    press("cmdSave");
    EXPECT_TRUE(row(1).endsWith(u";1;2"_s));
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FilmSaveTest, APictureThatWentAwayBeforeTheSaveLosesNothingElse) {
    const QString gone = picture(u"zmizi.jpg"_s);
    outside.files = {gone, gone};
    open(0);
    type("txtCZName", u"Bez obrázku"_s);
    press("cmdOpenObalPic");
    press("cmdOpenNahledPic");
    ASSERT_TRUE(QFile::remove(gone));
    press("cmdSave");
    EXPECT_TRUE(row(1).contains(u"Bez obrázku"_s) && row(1).endsWith(u";1;0"_s)) << row(1).toStdString();
    EXPECT_EQ(outside.told(), errors::description(errors::fileNotFound) + u"|0|"_s);
}

TEST_F(FilmSaveTest, ACatalogueThatCannotBeWrittenLosesNothingOfOtherFilms) {
    sql("INSERT INTO tDVD (DVDID, CZJm) VALUES (1, 'One'), (2, 'Two')");
    // Each in turn of the stores that a save makes fails, as on a full disk.
    const std::pair<const char*, QString> stores[] = {{"INSERT", u"1:One 2:Two"_s},
                                                      {"UPDATE OF CZJm", u"1:One 2:Two 3:-"_s},
                                                      {"UPDATE OF KatCisl", u"1:One 2:Two 3:- 4:New"_s}};
    for (const auto& [store, left] : stores) {
        sql(("CREATE TRIGGER t BEFORE "_ba + store + " ON tDVD BEGIN SELECT RAISE(FAIL, 'full'); END")
                .constData());
        open(0);
        type("txtCZName", u"New"_s);
        press("cmdSave");
        EXPECT_EQ(editor().Vysledek, 1);
        sql("DROP TRIGGER t");
        EXPECT_EQ(
            text("SELECT group_concat(film, ' ') FROM (SELECT DVDID || ':' || ifnull(CZJm, '-') AS film "
                 "FROM tDVD ORDER BY DVDID LIMIT 9)"),
            left);
    }
    ASSERT_TRUE(QFile::remove(catalogue()));
    open(1);
    EXPECT_FALSE(outside.boxes.isEmpty());
    EXPECT_EQ(ConnDB, nullptr);
}
