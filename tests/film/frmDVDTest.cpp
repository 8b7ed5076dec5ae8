#include "film/frmDVD.h"

#include <QClipboard>
#include <QListWidget>
#include <QTabWidget>
#include <QtEndian>
#include <optional>

#include "core/mDatabase.h"
#include "core/mFunction.h"
#include "datatool/pictureFormat.h"
#include "support/TemporaryProgram.h"
#include "support/pictures.h"
#include "support/windows.h"

namespace {

class FrmDVDTest : public TemporaryProgram {
 protected:
    frmDVD& editor() { return *editor_; }
    void open(qint32 id) {
        editor_.emplace(Sites{});
        editor_->Inicializuj(id);
        editor_->show();
    }
    template <typename Control>
    Control& control(const char* name) {
        return ::control<Control>(editor(), name);
    }
    void type(const char* box, const QString& text) { control<QLineEdit>(box).setText(text); }
    QString typed(const char* box) { return control<QLineEdit>(box).text(); }
    void press(const char* button) { control<QPushButton>(button).click(); }
    void pressEnterOn(const char* name) {
        auto& pressed = control<QWidget>(name);
        pressed.setFocus();
        QTest::keyClick(&pressed, Qt::Key_Return);
    }
    QComboBox& department() { return control<QComboBox>("cboOddel"); }
    QListWidget& genres() { return control<QListWidget>("lstZanr"); }
    bool genresAreOpen() { return control<QWidget>("picZanr").isVisible(); }
    ImageFrame& cover() { return control<ImageFrame>("imgObalDesk_0"); }
    QString picture(const QString& name) const {
        write(name, pictureOf(Qt::red, "PNG"));
        return at(name);
    }

    /// Saves the film. @return the transactions that this took, counted by SQLite in the file headers.
    quint32 save() {
        const auto changes = [this](const QString& file) {
            return qFromBigEndian<quint32>(content(file).constData() + 24);
        };
        const quint32 before = changes(catalogue()) + changes(pictures());
        press("cmdSave");
        EXPECT_EQ(editor().Vysledek, 1);
        EXPECT_FALSE(editor().isVisible());
        return changes(catalogue()) + changes(pictures()) - before;
    }
    /// All columns of the newest film.
    QString row() const {
        return text(
            "SELECT json_array(DVDID, KatCisl, CZJm, PuvJm, Zanr, DiskPocet, Obsah, Jazyk, Stat, Rezie,"
            " Delka, Rok, Oddel_ID, Herci, Poznamka, Nabidka, JazykDetail, Titulky, Obal_ID, Nahled_ID)"
            " FROM tDVD ORDER BY DVDID DESC");
    }

 private:
    std::optional<frmDVD> editor_;
};

}  // namespace

TEST_F(FrmDVDTest, ANewFilmGetsTheUsualValues) {
    open(0);
    EXPECT_TRUE(control<QWidget>("picTab_0").isVisible());
    EXPECT_FALSE(genresAreOpen());
    EXPECT_EQ(department().itemData(4).toInt(), 5);
    EXPECT_EQ(genres().item(3)->text(), u"Dokumentární"_s);
    type("txtCZName", u"Čáp"_s);
    press("cmdFindNet");  // its plugin is missing
    EXPECT_EQ(outside.owner(), &editor());
    EXPECT_TRUE(outside.told().startsWith(u"Vyhledávání v obchodě nelze otevřít:\n"));
    EXPECT_EQ(save(), 3u);  // the empty row, the columns, the number
    EXPECT_EQ(editor().IDFilmu, 1);
    EXPECT_EQ(row(),
              uR"([1,"1","Čáp","","",1,"",0,"","","","",1,"","",)"
              R"("N|N|N|N|N","N|N|N|N|N|N|N|N|N","N|N|N|N|N|N|N",0,0])"_s);
}

TEST_F(FrmDVDTest, TickedGenresReplaceTheText) {
    const auto tick = [this](Qt::CheckState state) {
        for (const int genre : {4, 12})
            genres().item(genre)->setCheckState(state);
    };
    open(0);
    type("txtZanr", u"Starý"_s);
    pressEnterOn("Command1");
    EXPECT_TRUE(genresAreOpen());
    tick(Qt::Checked);
    pressEnterOn("Command3");
    EXPECT_FALSE(genresAreOpen());
    EXPECT_EQ(typed("txtZanr"), u"Starý"_s);
    press("Command1");
    QTest::keyClick(&genres(), Qt::Key_Return);
    EXPECT_FALSE(genresAreOpen());
    EXPECT_EQ(typed("txtZanr"), u"Drama, Krimi"_s);
    press("Command1");
    tick(Qt::Unchecked);
    pressEnterOn("Command2");
    EXPECT_EQ(typed("txtZanr"), u""_s);
    EXPECT_TRUE(editor().isVisible());
}

TEST_F(FrmDVDTest, ANamelessGenreIsReportedAndSkipped) {
    sql("UPDATE tZanr SET ZNAME=NULL WHERE ZID=2; DELETE FROM tOddeleni");
    open(0);
    EXPECT_EQ(genres().count(), 24);
    EXPECT_EQ(department().currentText(), u"Combo1"_s);
    EXPECT_EQ(outside.told(), u"Chyba : Refresh_ZanrCBO, frmDVD\n"_s +
                                  errors::description(errors::invalidNull) + u"|16|Chyba Aplikace"_s);
    save();
    EXPECT_EQ(number("SELECT Oddel_ID IS NULL FROM tDVD"), 1);
}

TEST_F(FrmDVDTest, OnlyEnterInAFieldSaves) {
    for (const auto& [name, page, result] :
         {std::tuple("cmdOpenObalPic", 3, 0), {"cmdStorno", 0, 2}, {"txtCZName", 0, 1}}) {
        open(0);
        editor().activateWindow();
        control<QTabWidget>("tabMain").setCurrentIndex(page);
        pressEnterOn(name);
        EXPECT_EQ(editor().isVisible(), result == 0) << name;
        if (editor().isVisible()) QTest::keyClick(&editor(), Qt::Key_Escape);
        EXPECT_EQ(editor().Vysledek, result);
        EXPECT_EQ(number("SELECT count(*) FROM tDVD"), result == 1 ? 1 : 0);
    }
    EXPECT_EQ(outside.fileDialogs.size(), 1);
}

TEST_F(FrmDVDTest, EscapeLeavesOnlyAnEditorWithoutChanges) {
    sql("INSERT INTO tDVD (DVDID, CZJm, Obsah, Jazyk, Nabidka, Oddel_ID) VALUES"
        " (1, 'One', 'a' || char(10) || 'b', 1, 'A|N', 2)");
    const auto line = [this](const char* name) { QTest::keyClicks(&control<QLineEdit>(name), u"x"_s); };
    const auto lines = [this](const char* name) { control<QPlainTextEdit>(name).insertPlainText(u"x"_s); };
    const std::function<void()> changes[] = {[&] { line("txtKatalog"); },
                                             [&] { line("txtCZName"); },
                                             [&] { line("txtDisk"); },
                                             [&] { line("txtZanr"); },
                                             [&] { lines("txtPopis"); },
                                             [&] { lines("txtPozn"); },
                                             [&] { control<QAbstractButton>("optJazyk_2").click(); },
                                             [&] { control<QAbstractButton>("chkMenu_0").click(); },
                                             [&] { control<QAbstractButton>("chkSound_8").click(); },
                                             [&] { control<QAbstractButton>("chkTitle_6").click(); },
                                             [&] { genres().item(1)->setCheckState(Qt::Checked); },
                                             [&] { QTest::keyClick(&department(), Qt::Key_Down); },
                                             [&] { QTest::keyClicks(department().lineEdit(), u"x"_s); },
                                             [&] {
                                                 outside.files = {picture(u"a.png"_s)};
                                                 press("cmdOpenObalPic");
                                             },
                                             [&] {
                                                 outside.files = {picture(u"a.png"_s)};
                                                 press("cmdOpenNahledPic");
                                             }};
    int number = 0;
    for (const auto& change : changes) {
        for (const qint32 film : {0, 1}) {
            open(film);
            change();
            QTest::keyClick(&editor(), Qt::Key_Escape);
            EXPECT_TRUE(editor().isVisible()) << number << ' ' << film;
            ++number;
        }
    }
    open(1);
    control<QAbstractButton>("chkMenu_0").click();
    control<QAbstractButton>("chkMenu_0").click();
    control<QTabWidget>("tabMain").setCurrentIndex(3);
    press("Command1");
    press("Command3");
    QTest::keyClick(&editor(), Qt::Key_Escape);
    EXPECT_FALSE(editor().isVisible());
    EXPECT_EQ(editor().Vysledek, 0);
}

TEST_F(FrmDVDTest, LongTextsStartAtTheirBeginningAndLongWordsBreakAnywhere) {
    const QString word = QString(u"abcdefghij"_s).repeated(40000);
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, PuvJm, Zanr, Stat, Rezie, Obsah, Poznamka, Oddel_ID) SELECT "
        "1, t, t,"
        " t, t, t, t, t, 'a b', 3 FROM (SELECT replace(hex(zeroblob(150)), '00', 'ab ') AS t)");
    open(1);
    for (const QLineEdit* box : editor().findChildren<QLineEdit*>())
        EXPECT_EQ(box->cursorPosition(), 0) << box->objectName().toStdString();
    for (int genre = 0; genre < genres().count(); ++genre)
        genres().item(genre)->setCheckState(Qt::Checked);
    press("Command2");
    EXPECT_EQ(control<QLineEdit>("txtZanr").cursorPosition(), 0);

    auto& text = control<QPlainTextEdit>("txtPopis");
    EXPECT_EQ(text.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    text.selectAll();
    QApplication::clipboard()->setText(word);
    text.paste();
    EXPECT_EQ(text.wordWrapMode(), QTextOption::WrapAnywhere);
    EXPECT_EQ(control<QPlainTextEdit>("txtPozn").wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    text.selectAll();
    QApplication::clipboard()->clear();
    text.copy();
    EXPECT_EQ(QApplication::clipboard()->text(), word);
    text.undo();
    EXPECT_EQ(text.wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    text.redo();
    save();
    EXPECT_EQ(this->text("SELECT Obsah FROM tDVD"), word);
    open(1);
    EXPECT_EQ(control<QPlainTextEdit>("txtPopis").wordWrapMode(), QTextOption::WrapAnywhere);
}

TEST_F(FrmDVDTest, TypingIntoTheDepartmentChoosesNone) {
    sql("INSERT INTO tDVD (DVDID, CZJm, Oddel_ID) VALUES (1, 'One', 2)");
    open(1);
    EXPECT_EQ(department().currentText(), u"Dětské filmy"_s);
    department().lineEdit()->selectAll();
    QTest::keyClicks(department().lineEdit(), u"Dokumenty"_s);
    QTest::keyClick(department().lineEdit(), Qt::Key_Tab);
    save();
    EXPECT_EQ(number("SELECT Oddel_ID FROM tDVD"), 2);
    open(1);
    QTest::keyClick(&department(), Qt::Key_Down);
    save();
    EXPECT_EQ(number("SELECT Oddel_ID FROM tDVD"), 3);
}

TEST_F(FrmDVDTest, PicturesAreReadByTheirContent) {
    const QByteArray jpeg = pictureOf(Qt::red, "JPG");
    open(0);
    for (const QByteArray& file :
         {jpeg, pictureOf(Qt::red, "PNG"), pictureOf(Qt::red, "BMP"), pictureOf(Qt::red, "WEBP"),
          pictureOf(Qt::red, "ICO"), pictureOf(Qt::red, "TIFF"), pictureOf(Qt::red, "PPM"),
          QByteArray::fromBase64("R0lGODlhAQABAPAAAP8AAAAAACH5BAAAAAAALAAAAAABAAEAAAICRAEAOw==")}) {
        write(u"a.jpg"_s, file);
        outside.files = {at(u"a.jpg"_s), QString()};
        press("cmdOpenObalPic");
        EXPECT_TRUE(cover().hasPicture()) << file.first(10).toStdString();
        EXPECT_TRUE(pictureFormat::isPicture(file)) << file.first(10).toStdString();
        press("cmdOpenObalPic");
        EXPECT_FALSE(cover().hasPicture());
    }
    QByteArray vast = jpeg;  // claims 40,000 by 40,000 pixels: kept, but not decoded
    vast.replace(jpeg.indexOf("\xFF\xC0") + 5, 4, QByteArray::fromHex("9c409c40"));
    const QByteArray scan = pictureOf(Qt::red, "PNG", {8000, 8000});
    for (const QByteArray& file : {vast, scan}) {
        write(u"a.jpg"_s, file);
        cover().loadPicture(at(u"a.jpg"_s));
        EXPECT_EQ(cover().hasPicture(), file == scan);
    }
    cover().loadPicture(QString());
    const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>";
    for (const QByteArray& file : {QByteArray("není obrázek"), jpeg.first(20), drawing}) {
        write(u"a.jpg"_s, file);
        EXPECT_EQ(failureOf([this] { cover().loadPicture(at(u"a.jpg"_s)); }), errors::invalidPicture);
    }
    EXPECT_EQ(failureOf([this] { cover().loadPicture(at(u"b.jpg"_s)); }), errors::fileNotFound);
    EXPECT_FALSE(cover().hasPicture());
}

TEST_F(FrmDVDTest, TheCopyIsTheFileOfTheLastSavedFilm) {
    write(u"data/OBAL.jpg"_s, "saved");
    outside.files = {picture(u"y.jpg"_s), QString(), QString(), at(u"cil.jpg"_s)};
    open(0);
    for (const char* button : {"cmdOpenNahledPic", "cmdOpenObalPic", "cmdSaveObal", "cmdSaveObal"})
        press(button);
    EXPECT_EQ(content(u"cil.jpg"_s), "saved");
    EXPECT_EQ(CtiNastaveni(u"Nahled"_s, u"-"_s) + CtiNastaveni(u"Covers"_s, u"-"_s), folder() + u'/');
}

TEST_F(FrmDVDTest, EveryColumnIsLoadedAndStored) {
    sql("INSERT INTO tDVD VALUES (1, ' 77a', 'Čáp & <b>rak</b>', 'Stork', 'Drama, Krimi', 3, 'popis', 1, "
        "'Česko', 'rrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrr+', '118 min.', '1999', 3, 'herci', 'pozn', "
        "'A|A|N|N|A', 'A|N|A|N|N|N|N|N|N', 'N|N|N|N|N|N|A', 0, 0)");
    open(1);
    EXPECT_EQ(department().currentText(), u"Seriály"_s);
    editor().IDFilmu = 0;  // stores what is shown as another film
    EXPECT_EQ(save(), 2u);
    EXPECT_EQ(row(),
              uR"([2," 77a","Čáp & <b>rak</b>","Stork","Drama, Krimi",3,"popis",1,"Česko",)"
              R"("rrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrr","118","1999",3,"herci","pozn",)"
              R"("A|A|N|N|A","A|N|A|N|N|N|N|N|N","N|N|N|N|N|N|A",0,0])"_s);
}

TEST_F(FrmDVDTest, TextABoxCannotShowIsKeptUntilEdited) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, PuvJm, Obsah) VALUES (1, '1', 'dva' || char(10) || 'řádky', "
        "hex(zeroblob(20000)), 'a' || char(10) || 'b')");
    const auto texts = [this] { return text("SELECT CZJm || PuvJm || Obsah FROM tDVD"); };
    const QString before = texts();
    open(1);
    EXPECT_EQ(typed("txtPuvName").size(), 40000);
    EXPECT_EQ(department().currentIndex(), -1);  // Null
    save();
    EXPECT_EQ(texts(), before);
    open(1);
    EXPECT_EQ(control<QPlainTextEdit>("txtPopis").blockCount(), 2);
    for (const char* box : {"txtPopis", "txtHerci", "txtPozn"})
        control<QPlainTextEdit>(box).setPlainText(u"a\nc\u00A0d"_s);
    save();
    EXPECT_EQ(text("SELECT Obsah || Herci || Poznamka FROM tDVD"), u"a\r\nc\u00A0d"_s.repeated(3));
}

TEST_F(FrmDVDTest, ARefusedValueKeepsItsColumnOnly) {
    sql("INSERT INTO tDVD (DVDID, CZJm, DiskPocet, Oddel_ID, Jazyk, Titulky) VALUES (5, 'Old', 4, 99, 7, "
        "'A|A')");
    open(5);
    EXPECT_EQ(department().currentText() + typed("txtDisk") + typed("txtKatalog"), u"4"_s);
    for (const QString& disks : {u"dva"_s, u""_s, u"99999999999"_s}) {
        open(5);
        type("txtDisk", disks);
        type("txtCZName", u"New"_s + disks);
        save();
        EXPECT_EQ(row(),
                  uR"([5,"5","New%1","","",4,"",0,"","","","",99,"","",)"
                  R"("N|N|N|N|N","N|N|N|N|N|N|N|N|N","A|A|N|N|N|N|N",0,0])"_s.arg(disks));
    }
}

TEST_F(FrmDVDTest, AMissingFilmIsReportedOnceAndEndsAsSaved) {
    const QString told = u"Záznam nenalezen! (cmdSAVE,frmDVD)|16|Chyba aplikace"_s;
    open(6);
    EXPECT_EQ(outside.told(), told);
    EXPECT_EQ(typed("txtDisk"), u"1"_s);
    save();
    EXPECT_EQ(outside.told(), told);
    EXPECT_EQ(editor().IDFilmu, 6);
    EXPECT_EQ(number("SELECT count(*) FROM tDVD"), 0);
    ASSERT_TRUE(QFile::remove(catalogue()));
    for (const qint32 film : {1, 0}) {
        open(film);
        editor().IDFilmu = film;
        press("cmdSave");
        const QString reason = u"Soubor databáze nelze otevřít.\n\n"_s + catalogue() + u"|0|"_s;
        EXPECT_EQ(outside.told(), film == 0 ? reason : reason + u'\n' + reason);
    }
    EXPECT_EQ(ConnDB, nullptr);
}

TEST_F(FrmDVDTest, AFilmThatCouldNotBeReadIsNotStoredOver) {
    sql("INSERT INTO tDVD (KatCisl, CZJm, Jazyk) VALUES ('1', 'Čáp', 0)");
    const QString before = row();
    const QString away = at(u"away.ddb"_s);
    ASSERT_TRUE(QFile::rename(catalogue(), away));
    open(1);
    ASSERT_TRUE(QFile::rename(away, catalogue()));
    outside.boxes.clear();
    QStringList usable;
    for (const QWidget* each : editor().findChildren<QWidget*>()) {
        if (each->focusPolicy() != Qt::NoFocus && each->isEnabled()) usable += each->objectName();
    }
    EXPECT_EQ(usable, QStringList({u"cmdSave"_s, u"cmdStorno"_s}));
    EXPECT_EQ(editor().focusWidget(), &control<QWidget>("cmdStorno"));
    save();
    EXPECT_EQ(row(), before);
    EXPECT_TRUE(outside.told().contains(u"beze změny"_s));
    open(1);
    type("txtCZName", u"Kolja"_s);
    save();
    EXPECT_TRUE(row().contains(u"Kolja"_s));
}

TEST_F(FrmDVDTest, PicturesAreStoredAndKeepTheirKeys) {
    const auto choose = [this](const QStringList& files) {
        outside.files = files;
        press("cmdOpenObalPic");
        press("cmdOpenNahledPic");
    };
    // Saves and reopens the film. Gives the transactions and the keys of its pictures.
    const auto saved = [this] {
        const quint32 transactions = save();
        open(1);
        return text("SELECT Obal_ID || ' ' || Nahled_ID FROM tDVD") + u" in %1"_s.arg(transactions);
    };
    const QString preview = picture(u"nahled.jpeg"_s);
    open(0);
    choose({picture(u"obal.png"_s), preview});
    EXPECT_EQ(saved(), u"1 2 in 7"_s);
    EXPECT_TRUE(cover().hasPicture() && control<ImageFrame>("imgObalDesk_1").hasPicture());
    EXPECT_EQ(control<QLabel>("lblNahled").text(), at(u"data/nahled.peg"_s));
    EXPECT_EQ(content(u"data/obal.png"_s), content(u"obal.png"_s));
    EXPECT_EQ(saved(), u"1 2 in 5"_s);
    choose({QString(), preview});
    EXPECT_EQ(saved(), u"0 2 in 3"_s);
    EXPECT_FALSE(cover().hasPicture());
    choose({preview, preview});
    EXPECT_EQ(saved(), u"1 2 in 5"_s);
    choose({preview, preview});
    ASSERT_TRUE(QFile::remove(preview));
    EXPECT_EQ(saved(), u"1 0 in 3"_s);
    EXPECT_EQ(outside.told(), errors::description(errors::fileNotFound) + u"|0|"_s);
}

TEST_F(FrmDVDTest, ASaveSurvivesAFullDisk) {
    refuse(catalogue(), "tDVD", "1");
    open(0);
    save();
    EXPECT_EQ(number("SELECT count(*) FROM tDVD"), 0);
    sql("DROP INDEX refuse_tDVD");
    refuse(catalogue(), "tDVD", "DiskPocet NOT NULL");
    open(0);
    save();
    EXPECT_EQ(number("SELECT count(*) FROM tDVD WHERE DiskPocet IS NULL"), 1);
}
