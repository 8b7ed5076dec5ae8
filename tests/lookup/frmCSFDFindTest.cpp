#include "lookup/frmCSFDFind.h"

#include "film/frmDVD.h"
#include "support/TemporaryProgram.h"
#include "support/filmPages.h"
#include "support/pictures.h"
#include "support/windows.h"
#include "toolkit/ImageFrame.h"
#include "toolkit/ListView.h"

namespace {

class FrmCSFDFindTest : public TemporaryProgram {
 protected:
    void serve(const filmPages::Film& film = {}) {
        outside.pages = filmPages::site(film, sites.filmDb, sites.filmDb2);
        outside.pages[search + u"ztracen%FD"_s] =
            filmPages::searchPage({{u"1-DUM/"_s, u"Ztracený dům"_s}, {u"2-B/"_s, u"Ztracený svět"_s}})
                .toUtf8();
        outside.pages[u"http://db/posters/1/123.png"_s] = pictureOf(Qt::red, "PNG");
    }
    static QString count(const QWidget& window) { return control<QLabel>(window, "Label2").text(); }
    static QLineEdit& line(const QWidget& window, const char* name) {
        return control<QLineEdit>(window, name);
    }

    const QString search = u"http://db/hledani-filmu-hercu-reziseru-ve-filmove-databazi/?search="_s;
    const Sites sites{.filmDb = u"http://db"_s, .filmDb2 = u"http://imdb"_s};
};

}  // namespace

TEST_F(FrmCSFDFindTest, ASearchListsFilmsAndTheSelectedOneIsRead) {
    serve();
    frmCSFDFind window(sites);
    window.show();
    auto& list = control<ListView>(window, "lvwSeznam");
    click(window, "Command1");  // there is no page for an empty term
    EXPECT_EQ(outside.owner(), &window);
    EXPECT_EQ(outside.told() + count(window), u"Pri stahovani doslo k chybe.|0|"_s);
    window.setTerm(u"ztracený"_s);
    QTest::keyClick(&line(window, "Text1"), Qt::Key_Return);
    EXPECT_EQ(count(window), u"Počet nalezených záznamů: 2"_s);
    EXPECT_EQ(window.focusWidget(), &list);
    click(window, "Command1");
    line(window, "findCZ").setFocus();
    QTest::keyClick(&line(window, "findCZ"), Qt::Key_Return);  // does not search
    outside.pages[search] = "nic";
    window.Hledej(QString());
    EXPECT_EQ(count(window), u"Počet nalezených záznamů: 4"_s);
    EXPECT_EQ(list.itemAt(2).text() + list.itemAt(3).subItem(1), u"ZTRACENÝ DŮM (1999)2-B/"_s);
    EXPECT_EQ(list.selectedItem().row(), 0);

    serve({.otherTitles = {u"Lost House"_s, u"La maison"_s}});
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(window.result().czechTitle, u"Ztracený dům"_s);
    click(window, "Command2");
    EXPECT_EQ(control<QComboBox>(window, "findPuvName").count(), 2);
    EXPECT_EQ(window.result().originalTitle, u"La maison"_s);
    for (const QLineEdit* box : window.findChildren<QLineEdit*>())
        EXPECT_EQ(box->cursorPosition(), 0) << box->objectName().toStdString();
    EXPECT_TRUE(control<ImageFrame>(window, "picWenImgNahl").hasPicture());
    EXPECT_EQ(count(window), u"Hotovo z 65%"_s);
    EXPECT_EQ(control<QWidget>(window, "frmData").pos(), QPoint(6, 2));
    // A film without a cast ends the reading, not the program.
    serve({.czechTitle = u"Jiný"_s, .cast = {}});
    click(window, "Command2");
    EXPECT_TRUE(outside.told().contains(u"|16|"_s));
    EXPECT_EQ(window.result().czechTitle, u"Jiný"_s);
    EXPECT_FALSE(control<QFrame>(window, "picTime").isVisible());
}

TEST_F(FrmCSFDFindTest, TheEditorTakesWhatIsNotBlankUnlessCancelled) {
    serve({.origin = u"USA / Spojené království / Německo, , 118 min"_s});
    frmDVD editor(sites);
    editor.show();
    line(editor, "txtCZName").setText(u" ztracený "_s);
    line(editor, "txtRok").setText(u"1950"_s);
    line(editor, "txtRok").home(false);
    const auto lookUp = [&](const std::function<void(frmCSFDFind&)>& steps) {
        inModalWindow([&] { click(editor, "Command4"); },
                      [&](QWidget& lookup) { steps(dynamic_cast<frmCSFDFind&>(lookup)); });
    };
    for (const bool byKey : {false, true}) {
        lookUp([byKey](frmCSFDFind& window) {
            EXPECT_EQ(line(window, "Text1").text(), u"ztracený"_s);
            line(window, "findCZ").setText(u"Nic"_s);
            window.VlozitData = true;
            byKey ? QTest::keyClick(&window, Qt::Key_Escape) : click(window, "cmdStorno");
            EXPECT_FALSE(window.VlozitData);
        });
        EXPECT_EQ(line(editor, "txtCZName").text(), u" ztracený "_s);
    }
    lookUp([](frmCSFDFind& window) {
        click(window, "Command1");
        click(window, "Command2");
        line(window, "findRezie").setText(u"  "_s);
        click(window, "cmdInsertData");
    });
    QStringList lines;
    for (const char* name : {"txtCZName", "txtPuvName", "txtRok", "txtStat", "txtRezie"})
        lines += line(editor, name).text();
    EXPECT_EQ(lines.join(u'|'), u"Ztracený dům|Lost House|1950|USA , Eng , Německo|"_s);
    EXPECT_EQ(control<QPlainTextEdit>(editor, "txtHerci").toPlainText(), u"Žofie Černá, René & syn"_s);
    EXPECT_EQ(control<QLabel>(editor, "lblNahled").text(), at(u"data/webnahl.png"_s));
    for (const QLineEdit* box : editor.findChildren<QLineEdit*>())
        EXPECT_EQ(box->cursorPosition(), 0) << box->objectName().toStdString();
    // Work goes on in the field that is still empty, not at another search.
    EXPECT_EQ(editor.focusWidget(), &line(editor, "txtRezie"));
    EXPECT_TRUE(line(editor, "txtRezie").isVisible());
    line(editor, "txtRezie").setText(u"Jan Novák"_s);
    // Without a picture, but with the box ticked, the preview goes.
    lookUp([](frmCSFDFind& window) { click(window, "cmdInsertData"); });
    EXPECT_EQ(editor.focusWidget(), &control<QPushButton>(editor, "cmdSave"));
    EXPECT_EQ(line(editor, "txtCZName").text() + control<QLabel>(editor, "lblNahled").text(),
              u"Ztracený dům"_s);
}
