#include "lookup/frmCSFDFind.h"

#include "film/frmDVD.h"
#include "support/TemporaryProgram.h"
#include "support/WebServer.h"
#include "support/filmPages.h"
#include "support/pictures.h"
#include "support/windows.h"
#include "toolkit/ImageFrame.h"
#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;

namespace {

/// The lookup, the editor and the main window against a web server of their own.
class FrmCSFDFindTest : public TemporaryProgram {
 protected:
    FrmCSFDFindTest() { outside.online = true; }

    void serve(const filmPages::Film& film = {}) {
        const auto page = [this](const QString& target, const QString& text) {
            server.serve(target, {.body = text.toUtf8()});
        };
        page(search + u"ztracen%FD"_s,
             filmPages::searchPage({{u"1-DUM/"_s, u"Ztracený dům"_s}, {u"2-B/"_s, u"Ztracený svět"_s}}));
        page(u"/film/1-DUM/"_s, filmPages::plainPage(u"87"_s));
        page(u"/film/1-DUM/?text=87"_s, filmPages::fullPage(film, server.root()));
        page(u"/title/tt0123456"_s, filmPages::imdbPage(u"Lost House (1999)"_s));
        server.serve(u"/posters/1/123.png"_s,
                     {.body = pictureOf(qRgb(255, 0, 0), "PNG"), .type = "image/png"});
    }

    static QString count(const QWidget& window) { return control<QLabel>(window, "Label2").text(); }
    static QString line(const QWidget& window, const char* name) {
        return control<QLineEdit>(window, name).text();
    }

    const QString search = u"/hledani-filmu-hercu-reziseru-ve-filmove-databazi/?search="_s;
    WebServer server;
    const Sites sites{.filmDb = server.root(), .filmDb2 = server.root()};
};

}  // namespace

TEST_F(FrmCSFDFindTest, EverySearchAddsItsFilmsAndAFailedOneChangesNothing) {
    serve();
    frmCSFDFind window(sites);
    window.show();
    auto& term = control<QLineEdit>(window, "Text1");
    auto& list = control<ListView>(window, "lvwSeznam");
    click(window, "Command1");  // no term: not found
    EXPECT_EQ(outside.told(), u"Pri stahovani doslo k chybe.|0|"_s);
    EXPECT_EQ(count(window), u""_s);
    term.setText(u"ztracený"_s);
    QTest::keyClick(&term, Qt::Key_Return);
    EXPECT_EQ(count(window), u"Počet nalezených záznamů: 2"_s);
    // The next Enter is the list's, and that one alone reads a film.
    EXPECT_EQ(window.focusWidget(), &list);
    EXPECT_EQ(server.targets().last(), search + u"ztracen%FD"_s);
    click(window, "Command1");
    EXPECT_EQ(count(window), u"Počet nalezených záznamů: 4"_s);
    control<QLineEdit>(window, "findCZ").setFocus();
    QTest::keyClick(&control<QLineEdit>(window, "findCZ"), Qt::Key_Return);  // no search from here
    EXPECT_EQ(list.count(), 4);
    EXPECT_EQ(list.itemAt(2).text(), u"ZTRACENÝ DŮM (1999)"_s);
    EXPECT_EQ(list.itemAt(3).subItem(1), u"2-B/"_s);
    EXPECT_EQ(list.selectedItem().row(), 0);
    server.serve(search, {.body = "nic"});
    term.clear();
    click(window, "Command1");
    EXPECT_EQ(count(window), u"Počet nalezených záznamů: 4"_s);
    EXPECT_EQ(server.targets().last(), search);
}

TEST_F(FrmCSFDFindTest, AFilmIsReadIntoTheFields) {
    serve({.otherTitles = {u"Lost House"_s, u"La maison"_s}});
    frmCSFDFind window(sites);
    window.show();
    window.Hledej(u"ztracený"_s);
    click(window, "Command2");
    EXPECT_EQ(control<QComboBox>(window, "findPuvName").count(), 2);
    EXPECT_TRUE(control<ImageFrame>(window, "picWenImgNahl").hasPicture());
    EXPECT_EQ(window.result().originalTitle, u"La maison"_s);
    EXPECT_TRUE(window.result().withPicture);
    EXPECT_EQ(count(window), u"Hotovo z 65%"_s);
    EXPECT_EQ(control<QWidget>(window, "frmData").pos(), QPoint(6, 2));
    EXPECT_FALSE(control<QFrame>(window, "picTime").isVisible());

    // A film without a cast ends the reading, not the program.
    serve({.czechTitle = u"Jiný"_s, .cast = {}});
    click(window, "Command2");
    EXPECT_TRUE(outside.told().contains(u"|16|"_s));
    EXPECT_EQ(window.result().czechTitle, u"Jiný"_s);
    EXPECT_FALSE(control<QFrame>(window, "picTime").isVisible());
    click(window, "cmdInsertData");
    EXPECT_TRUE(window.VlozitData);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmCSFDFindTest, ItIsLeftWithoutAResultByItsButtonTheEscapeKeyAndItsFrame) {
    const std::function<void(frmCSFDFind&)> ways[] = {
        [](frmCSFDFind& window) { click(window, "cmdStorno"); },
        [](frmCSFDFind& window) { QTest::keyClick(&window, Qt::Key_Escape); },
        [](frmCSFDFind& window) { window.close(); }};
    for (const auto& leave : ways) {
        frmCSFDFind window(sites);
        window.show();
        window.VlozitData = true;
        leave(window);
        EXPECT_FALSE(window.VlozitData);
        EXPECT_FALSE(window.isVisible());
    }
}

TEST_F(FrmCSFDFindTest, TheEditorTakesWhatIsNotBlank) {
    serve({.origin = u"USA / Spojené království / Německo, , 118 min"_s});
    frmDVD editor(sites);
    editor.show();
    control<QLineEdit>(editor, "txtCZName").setText(u" ztracený "_s);
    control<QLineEdit>(editor, "txtRok").setText(u"1950"_s);
    const auto lookUp = [&](const char* button) {
        inModalWindow([&] { click(editor, "Command4"); },
                      [&](const QWidget& lookup) {
                          EXPECT_EQ(line(lookup, "Text1"), u"ztracený"_s);
                          click(lookup, "Command1");
                          click(lookup, "Command2");
                          control<QLineEdit>(lookup, "findRezie").setText(u"  "_s);
                          click(lookup, button);
                      });
    };
    lookUp("cmdStorno");
    EXPECT_EQ(line(editor, "txtCZName"), u" ztracený "_s);
    lookUp("cmdInsertData");
    EXPECT_EQ(line(editor, "txtCZName"), u"Ztracený dům"_s);
    EXPECT_EQ(line(editor, "txtPuvName"), u"Lost House"_s);
    EXPECT_EQ(line(editor, "txtRok"), u"1950"_s);
    EXPECT_EQ(line(editor, "txtStat"), u"USA , Eng , Německo"_s);
    EXPECT_EQ(line(editor, "txtRezie"), u""_s);
    EXPECT_EQ(control<QPlainTextEdit>(editor, "txtHerci").toPlainText(), u"Žofie Černá, René & syn"_s);
    EXPECT_EQ(control<QLabel>(editor, "lblNahled").text(), folder() + u"/data/webnahl.png"_s);

    // Without a picture, but with the box ticked, the preview goes.
    inModalWindow([&] { click(editor, "Command4"); },
                  [](const QWidget& lookup) { click(lookup, "cmdInsertData"); });
    EXPECT_EQ(control<QLabel>(editor, "lblNahled").text(), u""_s);
    EXPECT_EQ(line(editor, "txtCZName"), u"Ztracený dům"_s);
}
