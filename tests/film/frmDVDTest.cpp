#include <QTabWidget>

#include "core/mFunction.h"
#include "film/editorFixture.h"

using namespace Qt::StringLiterals;

namespace {

class FrmDVDTest : public EditorTest {
 protected:
    QListWidget& genres() { return control<QListWidget>("lstZanr"); }
    QWidget& panel() { return control<QWidget>("picZanr"); }
};

}  // namespace

TEST_F(FrmDVDTest, AMissingPartOfTheShopLookupIsToldAndLosesNothing) {
    open(0);
    type("txtCZName", u"Čáp"_s);
    press("cmdFindNet");  // the plugin does not lie beside the tests
    EXPECT_TRUE(outside.told().startsWith(u"Vyhledávání v obchodě nelze otevřít:\n"));
    EXPECT_EQ(typed("txtCZName"), u"Čáp"_s);
}

TEST_F(FrmDVDTest, OpensEmptyOnTheFirstOfItsTabs) {
    open(0);
    EXPECT_TRUE(control<QWidget>("picTab_0").isVisible());
    EXPECT_FALSE(panel().isVisible());
    EXPECT_EQ(typed("txtDisk"), u"1"_s);
    EXPECT_EQ(control<QComboBox>("cboOddel").itemData(4).toInt(), 5);
    EXPECT_EQ(genres().item(3)->text(), u"Dokumentární"_s);
}

TEST_F(FrmDVDTest, TickedGenresReplaceTheText) {
    open(0);
    type("txtZanr", u"Starý"_s);
    press("Command1");
    EXPECT_TRUE(panel().isVisible());
    genres().item(4)->setCheckState(Qt::Checked);
    genres().item(12)->setCheckState(Qt::Checked);
    press("Command3");
    EXPECT_EQ(typed("txtZanr"), u"Starý"_s);
    press("Command1");  // the ticks have stayed
    QTest::keyClick(&genres(), Qt::Key_Escape);
    EXPECT_FALSE(panel().isVisible());
    EXPECT_TRUE(editor().isVisible());
    press("Command1");
    QTest::keyClick(&genres(), Qt::Key_Return);
    EXPECT_EQ(typed("txtZanr"), u"Drama, Krimi"_s);
    EXPECT_TRUE(editor().isVisible());
    genres().item(4)->setCheckState(Qt::Unchecked);
    genres().item(12)->setCheckState(Qt::Unchecked);
    press("Command1");
    press("Command2");
    EXPECT_EQ(typed("txtZanr"), u""_s);
    EXPECT_FALSE(panel().isVisible());
}

TEST_F(FrmDVDTest, AGenreWithoutANameIsToldAndTheOthersFollow) {
    sql("UPDATE tZanr SET ZNAME=NULL WHERE ZID=2; DELETE FROM tOddeleni");
    open(0);
    EXPECT_EQ(genres().count(), 24);
    EXPECT_EQ(control<QComboBox>("cboOddel").currentText(), u"Combo1"_s);
    EXPECT_EQ(outside.told(), u"Chyba : Refresh_ZanrCBO, frmDVD\n"_s +
                                  errors::description(errors::invalidNull) + u"|16|Chyba Aplikace"_s);
    press("cmdSave");
    EXPECT_EQ(number("SELECT Oddel_ID IS NULL FROM tDVD"), 1);
}

TEST_F(FrmDVDTest, EnterSavesAndEscapeLeaves) {
    open(0);
    type("txtCZName", u"Enter"_s);
    QTest::keyClick(&control<QLineEdit>("txtCZName"), Qt::Key_Return);
    EXPECT_EQ(editor().Vysledek, 1);
    open(0);
    QTest::keyClick(&editor(), Qt::Key_Escape);
    EXPECT_FALSE(editor().isVisible());
    EXPECT_EQ(editor().Vysledek, 0);
    EXPECT_EQ(number("SELECT count(*) FROM tDVD"), 1);
}

TEST_F(FrmDVDTest, EnterOnAButtonPressesThatButton) {
    const auto enterOn = [this](const char* name) {
        auto& button = control<QPushButton>(name);
        button.setFocus();
        QTest::keyClick(&button, Qt::Key_Return);
    };
    open(0);
    editor().activateWindow();
    enterOn("cmdStorno");
    EXPECT_EQ(editor().Vysledek, 2);
    open(0);
    type("txtZanr", u"Drama"_s);
    press("Command1");
    enterOn("Command3");
    EXPECT_FALSE(panel().isVisible());
    EXPECT_EQ(typed("txtZanr"), u"Drama"_s);
    enterOn("Command1");
    EXPECT_TRUE(panel().isVisible());
    enterOn("Command2");
    EXPECT_EQ(typed("txtZanr"), u""_s);
    control<QTabWidget>("tabMain").setCurrentIndex(3);
    enterOn("cmdOpenObalPic");
    EXPECT_EQ(outside.fileDialogs.size(), 1);
    EXPECT_EQ(editor().Vysledek, 0);
    EXPECT_EQ(number("SELECT count(*) FROM tDVD"), 0);
}

TEST_F(FrmDVDTest, TypingIntoTheDepartmentChoosesNone) {
    sql("INSERT INTO tDVD (DVDID, CZJm, Oddel_ID) VALUES (1, 'One', 2)");
    const auto department = [this] { return number("SELECT Oddel_ID FROM tDVD WHERE DVDID=1"); };
    open(1);
    auto& combo = control<QComboBox>("cboOddel");
    EXPECT_EQ(combo.currentText(), u"Dětské filmy"_s);
    combo.lineEdit()->selectAll();
    QTest::keyClicks(combo.lineEdit(), u"Dokumenty"_s);
    QTest::keyClick(combo.lineEdit(), Qt::Key_Tab);
    press("cmdSave");
    EXPECT_EQ(department(), 2);
    open(1);
    QTest::keyClick(&control<QComboBox>("cboOddel"), Qt::Key_Down);
    press("cmdSave");
    EXPECT_EQ(department(), 3);
}

TEST_F(FrmDVDTest, PicturesOfEveryKindAreShownWhateverTheirNames) {
    open(0);
    for (const char* format : {"JPG", "PNG", "BMP", "WEBP"}) {
        outside.files = {picture(u"a.jpg"_s, format)};
        press("cmdOpenObalPic");
        EXPECT_TRUE(frame(0).hasPicture()) << format;
        press("cmdOpenObalPic");
        EXPECT_FALSE(frame(0).hasPicture());
    }
    write(u"g.jpg"_s, QByteArray::fromBase64("R0lGODlhAQABAPAAAP8AAAAAACH5BAAAAAAALAAAAAABAAEAAAICRAEAOw=="));
    outside.files = {at(u"g.jpg"_s)};
    press("cmdOpenNahledPic");
    EXPECT_TRUE(frame(1).hasPicture());
    EXPECT_EQ(control<QLabel>("lblNahled").text(), at(u"g.jpg"_s));
    EXPECT_EQ(CtiNastaveni(u"Nahled"_s, u"-"_s), folder() + u'/');
    EXPECT_EQ(CtiNastaveni(u"Covers"_s, u"-"_s), u""_s);  // the last choice was cancelled
}

TEST_F(FrmDVDTest, AHostilePictureIsRefusedAndChangesNothing) {
    open(0);
    const QByteArray whole = content(picture(u"a.jpg"_s));
    // A PNG that claims 40,000 by 40,000 pixels.
    const QByteArray huge =
        QByteArray::fromHex("89504e470d0a1a0a0000000d4948445200009c4000009c400802000000") +
        QByteArray::fromHex(
            "e3a7dd1a0000000c49444154789c6360f8cf00000301010018dd8db00000000049454e44ae426082");
    ImageFrame& cover = frame(0);
    // A JPEG that claims as many, in the header of its first frame.
    QByteArray vast = whole;
    const qsizetype header = vast.indexOf(QByteArray::fromHex("ffc0"));
    ASSERT_GT(header, 0);
    vast.replace(header + 5, 4, QByteArray::fromHex("9c409c40"));
    for (const QByteArray& bytes : {QByteArray("není obrázek"), whole.first(20), huge, vast}) {
        write(u"zly.jpg"_s, bytes);
        EXPECT_EQ(failureOf([&] { cover.loadPicture(at(u"zly.jpg"_s)); }), errors::invalidPicture);
    }
    EXPECT_EQ(failureOf([&] { cover.loadPicture(at(u"neni.jpg"_s)); }), errors::fileNotFound);
    EXPECT_FALSE(cover.hasPicture());
    // A picture cut off in the middle shows as far as it goes or is refused, and does no harm.
    write(u"pul.jpg"_s, whole.first(whole.size() / 2));
    const qint32 failure = failureOf([&] { cover.loadPicture(at(u"pul.jpg"_s)); });
    EXPECT_EQ(failure == 0, cover.hasPicture());
    EXPECT_TRUE(failure == 0 || failure == errors::invalidPicture);
}

TEST_F(FrmDVDTest, CopyingOutTakesTheFileThatTheLastFilmLeft) {
    write(u"data/OBAL.jpg"_s, content(picture(u"x.jpg"_s)));
    open(0);
    outside.files = {picture(u"y.jpg"_s, "JPG", qRgb(0, 0, 99)), QString(), picture(u"cil.jpg"_s, "JPG", 0)};
    press("cmdOpenObalPic");
    press("cmdSaveObal");  // cancelled
    press("cmdSaveObal");
    EXPECT_EQ(content(u"cil.jpg"_s), content(u"x.jpg"_s));
    EXPECT_NE(content(u"cil.jpg"_s), content(u"y.jpg"_s));
}
