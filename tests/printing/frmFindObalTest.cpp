#include "printing/frmFindObal.h"

#include <QAction>

#include "catalogue/frmMaster.h"
#include "support/TemporaryProgram.h"
#include "support/WebServer.h"
#include "support/pictures.h"
#include "support/windows.h"
#include "toolkit/ImageFrame.h"
#include "toolkit/ListView.h"

namespace {

/// The search for covers against a server of its own.
class FrmFindObalTest : public TemporaryProgram {
 protected:
    FrmFindObalTest() {
        outside.online = true;
        const QByteArray options =
            "<option value=\"17\">\x8E"
            "ert&nbsp(Joke) [EN]</option><option value=\"../a'<b>&amp;\">Dva&nbspTwo</option>"
            "<option value=\"17\">Znovu&nbspAgain</option>";
        for (const auto& [term, found] : {std::pair(u"%9Eert"_s, options), std::pair(u"nic"_s, ""_ba)}) {
            server.serve(u"/covers.php?search="_s + term,
                         {.body = "<select name=\"dvd\" align=\"center\" size=25>" + found + "</select>"});
        }
        server.serve(u"/support.php?DVDcover2=17"_s, {.body = jpg, .type = "image/jpeg"});
        window.show();
    }

    template <typename Control>
    Control& in(const char* name) const {
        return control<Control>(window, name);
    }
    /// Presses a button. @return the pages shown then, with "+" for a picture, and the boxes
    QString after(const char* button) {
        click(window, button);
        return pages() + outside.told();
    }
    QString pages() const {
        QStringList shown;
        for (const char* page : {"lvwDVD", "picNahled", "picPrinter"}) {
            if (in<QWidget>(page).isVisible()) shown += QLatin1String(page);
        }
        return shown.join(u' ') + (in<ImageFrame>("imgNahled").hasPicture() ? u"+"_s : u""_s);
    }
    void search(const QString& term) {
        window.setTerm(term);
        click(window, "Command1");
    }

    const QByteArray jpg = pictureOf(qRgb(255, 0, 0), "JPG");
    WebServer server;
    frmFindObal window{{.cover = server.root()}};
    ListView& list = in<ListView>("lvwDVD");
};

}  // namespace

TEST_F(FrmFindObalTest, ASearchReplacesTheListAndReportsAnEmptyResult) {
    window.setTerm(u"  žert "_s);
    QTest::keyClick(&in<QLineEdit>("Text1"), Qt::Key_Return);
    EXPECT_EQ(rowsOf(list), QStringList({u"D17|Žert|Joke|Anglicky"_s, u"D../a'<b>&amp;|&amp;\">Dva|Two|"_s}));
    EXPECT_EQ(pages(), u"lvwDVD"_s);
    search(u"nic"_s);
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(outside.told(), u"Obal nebyl nalezen.|64|Výsledek hledání"_s);
    search(u"žert"_s);
    search(u"neznámý"_s);  // answered with 404, silently
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(outside.told(), u""_s);
}

TEST_F(FrmFindObalTest, ACoverIsFetchedSavedAndStaysWhenTheNextOneFails) {
    const QString preview = u"picNahled+"_s;
    search(u"žert"_s);
    EXPECT_EQ(after("Command4"), preview);
    outside.files = {at(u"obal.jpg"_s), u""_s, at(u"missing/obal.jpg"_s)};  // cancelled; cannot be written
    for (int time = 0; time < 3; ++time)
        after("Command2");
    EXPECT_EQ(content(u"obal.jpg"_s), jpg);
    EXPECT_EQ(outside.fileDialogs.value(0).title, u"Uložení obrázku"_s);
    EXPECT_EQ(after("Command5").left(6), u"lvwDVD"_s);

    const QString failed = u"Chyba při stahování obalu|0|"_s;
    list.select(list.itemAt(1));  // unknown to the archive
    EXPECT_EQ(after("Command4"), preview + failed);
    EXPECT_EQ(server.targets().last(), u"/support.php?DVDcover2=../a'%3Cb%3E&amp;"_s);
    server.serve(u"/support.php?DVDcover2=17"_s, {.body = "<html>Neni</html>"});  // no picture
    after("Command5");
    list.select(list.itemAt(0));
    EXPECT_EQ(after("Command4"), preview);
    after("Command5");
    search(u"nic"_s);
    outside.told();
    EXPECT_EQ(after("Command4"), preview + failed);  // without a row
    EXPECT_FALSE(Err.pending());
}

TEST_F(FrmFindObalTest, PrintersAreOfferedAgainAtEachPressAndEscapeLeadsBackPageByPage) {
    outside.printerNames = {u"Hala"_s, u"Sklad"_s};
    search(u"žert"_s);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
    QApplication::sendEvent(&window, &held);
    EXPECT_EQ(pages(), u"lvwDVD"_s);  // a key held down is one press
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(after("Command3"), u"picNahled picPrinter+"_s);
    after("Command3");
    EXPECT_EQ(in<QComboBox>("Combo1").count(), 4);
    QTest::keyClick(&in<QComboBox>("Combo1"), Qt::Key_Return);
    EXPECT_EQ(pages(), u"picNahled+"_s);
    EXPECT_EQ(window.focusWidget(), &in<QPushButton>("Command3"));
    const auto [printer, page] = outside.printed.value(0);
    EXPECT_EQ(printer, u"Sklad"_s);
    EXPECT_EQ(page.picture, at(u"data/fobl.jpg"_s));
    EXPECT_TRUE(page.landscape);
    EXPECT_EQ(QRect(page.left, page.top, page.width, page.height), QRect(10, 10, 15600, 10480));
    // A printer removed meanwhile leaves the previous one selected.
    outside.printerNames += u"Nová"_s;
    after("Command3");
    outside.printerNames.removeLast();
    after("cmdSelectPrinterPrint");
    EXPECT_EQ(outside.printed.value(1).first, u"Sklad"_s);
    outside.refusal = u"Sklad nepřijímá úlohy."_s;
    after("Command3");
    EXPECT_EQ(after("cmdSelectPrinterPrint"), u"picNahled+Sklad nepřijímá úlohy.|48|Tisk obalu"_s);
    after("Command3");
    after("Command5");
    EXPECT_EQ(after("Command4"), u"picNahled+"_s);
    after("Command3");
    for (const QString& shown : {u"picNahled+"_s, u"lvwDVD+"_s, u"+"_s}) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(pages(), shown);
    }
}

TEST_F(FrmFindObalTest, TheMainWindowPassesATrimmedTitle) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES (1, '1', '  Žert ', 0)");
    frmMaster master({.cover = server.root()});
    master.show();
    QStringList terms;
    for (const char* action : {"mnuListItem_4", "mnuFindObal"}) {
        inModalWindow([&] { control<QAction>(master, action).trigger(); },
                      [&](QWidget& covers) {
                          terms += control<QLineEdit>(covers, "Text1").text();
                          covers.close();
                      });
    }
    EXPECT_EQ(terms, QStringList({u"Žert"_s, u""_s}));
    EXPECT_TRUE(server.targets().isEmpty());
}
