#include "printing/frmFindObal.h"

#include <QAction>

#include "catalogue/frmMaster.h"
#include "support/TemporaryProgram.h"
#include "support/WebServer.h"
#include "support/pictures.h"
#include "support/windows.h"
#include "toolkit/ImageFrame.h"
#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;

namespace {

/// The search for covers against a server of its own.
class FrmFindObalTest : public TemporaryProgram {
 protected:
    FrmFindObalTest() {
        outside.online = true;
        server.serve(
            u"/covers.php?search=%9Eert"_s,
            {.body = "<select name=\"dvd\" align=\"center\" size=25 onclick=\"\">"
                     "<option value=\"17\">\x8E"
                     "ert&nbsp(Joke) [EN]</option><option value=\"../a'<b>&amp;\">Dva&nbspTwo</option>"
                     "<option value=\"17\">Znovu&nbspAgain</option></select>"});
        server.serve(u"/support.php?DVDcover2=17"_s, {.body = jpg, .type = "image/jpeg"});
        server.serve(u"/covers.php?search=nic"_s,
                     {.body = "<select name=\"dvd\" align=\"center\" size=25></select>"});
        window.show();
    }

    template <typename Control>
    Control& in(const char* name) const {
        return control<Control>(window, name);
    }
    void press(const char* button) const { click(window, button); }
    bool shows(const char* panel) const { return in<QWidget>(panel).isVisible(); }
    void search(const QString& term) {
        window.setTerm(term);
        press("Command1");
    }
    const QByteArray jpg = pictureOf(qRgb(255, 0, 0), "JPG");
    WebServer server;
    frmFindObal window{{.cover = server.root()}};
    ListView& list = in<ListView>("lvwDVD");
};

}  // namespace

TEST_F(FrmFindObalTest, ASearchFillsTheListAnewAndTellsWhenThereIsNothing) {
    window.setTerm(u"  žert "_s);
    QTest::keyClick(&in<QLineEdit>("Text1"), Qt::Key_Return);
    ASSERT_EQ(list.count(), 2);
    const ListItem first = list.selectedItem();
    EXPECT_EQ(QStringList({first.key(), first.text(), first.subItem(1), first.subItem(2)}).join(u'|'),
              u"D17|Žert|Joke|Anglicky"_s);
    EXPECT_EQ(list.itemAt(1).key(), u"D../a'<b>&amp;"_s);
    EXPECT_FALSE(shows("picNahled"));
    search(u"nic"_s);
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(outside.told(), u"Obal nebyl nalezen.|64|Výsledek hledání"_s);
    search(u"žert"_s);
    search(u"neznámý"_s);  // 404: nothing is said
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(outside.told(), u""_s);
    EXPECT_EQ(failureOf([&] { window.ZpracujZaznamy(u"<html></html>"_s); }), 5);
}

TEST_F(FrmFindObalTest, ACoverIsFetchedShownAndSaved) {
    search(u"žert"_s);
    press("Command4");
    EXPECT_TRUE(shows("picNahled"));
    EXPECT_FALSE(shows("lvwDVD"));
    EXPECT_TRUE(in<ImageFrame>("imgNahled").hasPicture());
    outside.files = {at(u"obal.jpg"_s)};
    press("Command2");
    press("Command2");  // cancelled
    EXPECT_EQ(content(u"obal.jpg"_s), jpg);
    EXPECT_EQ(outside.fileDialogs.value(0).title, u"Uložení obrázku"_s);
    outside.files = {at(u"missing/obal.jpg"_s)};
    press("Command2");  // cannot be written: skipped
    press("Command5");
    EXPECT_FALSE(shows("picNahled"));
    EXPECT_TRUE(shows("lvwDVD"));
    EXPECT_TRUE(QFile::exists(at(u"data/fobl.jpg"_s)));
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FrmFindObalTest, TheFormerCoverStaysWhenNothingComes) {
    search(u"žert"_s);
    press("Command4");
    press("Command5");
    list.select(list.itemAt(1));
    const QString failed = u"Chyba při stahování obalu|0|"_s;
    press("Command4");  // a code that the archive does not know
    EXPECT_EQ(outside.told(), failed);
    EXPECT_TRUE(shows("picNahled"));
    EXPECT_TRUE(in<ImageFrame>("imgNahled").hasPicture());
    EXPECT_EQ(server.targets().last(), u"/support.php?DVDcover2=../a'%3Cb%3E&amp;"_s);
    // A page in place of the picture comes, and cannot be shown.
    server.serve(u"/support.php?DVDcover2=17"_s, {.body = "<html>Neni</html>"});
    press("Command5");
    list.select(list.itemAt(0));
    press("Command4");
    EXPECT_EQ(outside.told(), u""_s);
    EXPECT_TRUE(shows("picNahled"));
    EXPECT_TRUE(in<ImageFrame>("imgNahled").hasPicture());
    // Without a row the archive has nothing for an empty code.
    press("Command5");
    search(u"nic"_s);
    press("Command4");
    EXPECT_TRUE(outside.told().endsWith(failed));
    EXPECT_TRUE(shows("picNahled"));
    EXPECT_FALSE(Err.pending());
}

TEST_F(FrmFindObalTest, PrintersAreOfferedAgainAtEachPress) {
    outside.printerNames = {u"Hala"_s, u"Sklad"_s};
    search(u"žert"_s);
    press("Command4");
    press("Command3");
    EXPECT_TRUE(shows("picPrinter"));
    press("Command3");
    EXPECT_EQ(in<QComboBox>("Combo1").count(), 4);
    EXPECT_EQ(in<QComboBox>("Combo1").currentText(), u"Sklad"_s);
    QTest::keyClick(&in<QComboBox>("Combo1"), Qt::Key_Return);
    EXPECT_FALSE(shows("picPrinter"));
    EXPECT_EQ(window.focusWidget(), &in<QPushButton>("Command3"));
    ASSERT_EQ(outside.printed.size(), 1);
    const auto& [printer, page] = outside.printed.first();
    EXPECT_EQ(printer, u"Sklad"_s);
    EXPECT_EQ(page.picture, at(u"data/fobl.jpg"_s));
    EXPECT_TRUE(page.landscape);
    EXPECT_EQ(QRect(page.left, page.top, page.width, page.height), QRect(10, 10, 15600, 10480));
    // One that has gone since leaves the printer chosen before.
    outside.printerNames += u"Nová"_s;
    press("Command3");
    outside.printerNames.removeLast();
    press("cmdSelectPrinterPrint");
    EXPECT_EQ(outside.printed.last().first, u"Sklad"_s);
    // The choice does not outlive the page.
    press("Command3");
    press("Command5");
    press("Command4");
    EXPECT_FALSE(shows("picPrinter"));
}

TEST_F(FrmFindObalTest, EscapeLeadsBackPageByPage) {
    outside.printerNames = {u"Hala"_s};
    search(u"žert"_s);
    QTest::keyClick(&list, Qt::Key_Return);
    press("Command3");
    QTest::keyClick(&in<QComboBox>("Combo1"), Qt::Key_Escape);
    EXPECT_FALSE(shows("picPrinter"));
    QTest::keyClick(&in<QPushButton>("Command3"), Qt::Key_Escape);
    EXPECT_FALSE(shows("picNahled"));
    // A key that is held down is one press.
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
    list.setFocus();
    QApplication::sendEvent(&window, &held);
    EXPECT_FALSE(shows("picNahled"));
    QTest::keyClick(&list, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmFindObalTest, TheMainWindowHandsOverATrimmedTitle) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES (1, '1', '  Žert ', 0)");
    frmMaster master({.cover = server.root()});
    master.show();
    for (const auto& [action, term] : {std::pair("mnuListItem_4", u"Žert"_s), {"mnuFindObal", u""_s}}) {
        inModalWindow([&, action = action] { control<QAction>(master, action).trigger(); },
                      [term = term](QWidget& covers) {
                          EXPECT_EQ(control<QLineEdit>(covers, "Text1").text(), term);
                          covers.close();
                      });
    }
    EXPECT_TRUE(server.targets().isEmpty());
}
