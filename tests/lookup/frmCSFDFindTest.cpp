#include "lookup/frmCSFDFind.h"

#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "film/frmDVD.h"
#include "support/TemporaryProgram.h"
#include "support/WebServer.h"
#include "support/filmPages.h"
#include "toolkit/ImageFrame.h"
#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;

namespace {

/// The lookup, the editor and the main window against a web server of their own.
class FrmCSFDFindTest : public TemporaryProgram {
 protected:
    FrmCSFDFindTest() { outside.online = true; }

    static QByteArray png() {
        QImage image(20, 30, QImage::Format_RGB32);
        image.fill(Qt::red);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.save(&buffer, "PNG");
        return bytes;
    }

    void serve(const filmPages::Film& film = {}) {
        const auto page = [this](const QString& target, const QString& text) {
            server.serve(target, {.body = text.toUtf8()});
        };
        page(search + u"ztracen%FD"_s,
             filmPages::searchPage({{u"1-DUM/"_s, u"Ztracený dům"_s}, {u"2-B/"_s, u"Ztracený svět"_s}}));
        page(u"/film/1-DUM/"_s, filmPages::plainPage(u"87"_s));
        page(u"/film/1-DUM/?text=87"_s, filmPages::fullPage(film, server.root()));
        page(u"/title/tt0123456"_s, filmPages::imdbPage(u"Lost House (1999)"_s));
        server.serve(u"/posters/1/123.png"_s, {.body = png(), .type = "image/png"});
    }

    template <typename Control>
    static Control& in(const QWidget& window, const char* name) {
        return *window.findChild<Control*>(QString::fromLatin1(name));
    }
    static void press(const QWidget& window, const char* button) {
        QTest::mouseClick(&in<QPushButton>(window, button), Qt::LeftButton);
    }
    static QString count(const QWidget& window) { return in<QLabel>(window, "Label2").text(); }

    /// Goes through steps in the modal window that opens next.
    template <typename Steps>
    void inNextWindow(Steps steps) {
        QTimer::singleShot(0, QApplication::instance(), [steps] {
            QWidget* window = QApplication::activeModalWidget();
            ASSERT_NE(window, nullptr);
            steps(*window);
        });
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
    auto& term = in<QLineEdit>(window, "Text1");
    auto& list = in<ListView>(window, "lvwSeznam");
    press(window, "Command1");  // no term: not found
    EXPECT_EQ(outside.boxes, QList({ScriptedOutside::Box{u"Pri stahovani doslo k chybe."_s, 0, u""_s}}));
    EXPECT_EQ(count(window), u""_s);
    term.setText(u"ztracený"_s);
    QTest::keyClick(&term, Qt::Key_Return);
    EXPECT_EQ(count(window), u"Počet nalezených záznamů: 2"_s);
    press(window, "Command1");
    EXPECT_EQ(count(window), u"Počet nalezených záznamů: 4"_s);
    in<QLineEdit>(window, "findCZ").setFocus();
    QTest::keyClick(&in<QLineEdit>(window, "findCZ"), Qt::Key_Return);  // no search from here
    EXPECT_EQ(list.count(), 4);
    EXPECT_EQ(list.itemAt(2).text(), u"ZTRACENÝ DŮM (1999)"_s);
    EXPECT_EQ(list.itemAt(3).subItem(1), u"2-B/"_s);
    EXPECT_EQ(list.selectedItem().row(), 0);
    server.serve(search, {.body = "nic"});
    term.clear();
    press(window, "Command1");
    EXPECT_EQ(count(window), u"Počet nalezených záznamů: 4"_s);
    EXPECT_EQ(server.targets().last(), search);
}

TEST_F(FrmCSFDFindTest, AFilmIsReadIntoTheFields) {
    serve({.otherTitles = {u"Lost House"_s, u"La maison"_s}});
    frmCSFDFind window(sites);
    window.show();
    window.Hledej(u"ztracený"_s);
    press(window, "Command2");
    const LookupResult found = window.result();
    EXPECT_EQ(found.czechTitle, u"Ztracený dům"_s);
    EXPECT_EQ(found.originalTitle, u"La maison"_s);
    EXPECT_EQ(found.description, u"Příběh domu, který se ztratil."_s);
    EXPECT_EQ(in<QComboBox>(window, "findPuvName").count(), 2);
    EXPECT_TRUE(in<ImageFrame>(window, "picWenImgNahl").hasPicture());
    EXPECT_EQ(found.picturePath, folder() + u"/data/webnahl.png"_s);
    EXPECT_TRUE(found.withPicture);
    EXPECT_EQ(count(window), u"Hotovo z 65%"_s);
    EXPECT_FALSE(in<QFrame>(window, "picTime").isVisible());
    EXPECT_EQ(in<QWidget>(window, "frmData").pos(), QPoint(6, 2));
    EXPECT_EQ(window.size(), QSize(638, 388));

    // A film without a cast ends the reading, not the program.
    serve({.czechTitle = u"Jiný"_s, .cast = {}});
    press(window, "Command2");
    EXPECT_EQ(outside.boxes.size(), 1);
    EXPECT_EQ(outside.boxes[0].style, 16);
    EXPECT_EQ(window.result().czechTitle, u"Jiný"_s);
    EXPECT_FALSE(in<QFrame>(window, "picTime").isVisible());
    press(window, "cmdInsertData");
    EXPECT_TRUE(window.VlozitData);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(FrmCSFDFindTest, ItIsLeftWithoutAResultByItsButtonTheEscapeKeyAndItsFrame) {
    const std::function<void(frmCSFDFind&)> ways[] = {
        [](frmCSFDFind& window) { press(window, "cmdStorno"); },
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
    in<QLineEdit>(editor, "txtCZName").setText(u" ztracený "_s);
    in<QLineEdit>(editor, "txtRok").setText(u"1950"_s);
    inNextWindow([](QWidget& lookup) {
        EXPECT_EQ(in<QLineEdit>(lookup, "Text1").text(), u"ztracený"_s);
        press(lookup, "Command1");
        press(lookup, "Command2");
        in<QLineEdit>(lookup, "findRezie").setText(u"  "_s);
        press(lookup, "cmdStorno");
    });
    press(editor, "Command4");
    EXPECT_EQ(in<QLineEdit>(editor, "txtCZName").text(), u" ztracený "_s);
    inNextWindow([](QWidget& lookup) {
        press(lookup, "Command1");
        press(lookup, "Command2");
        in<QLineEdit>(lookup, "findRezie").setText(u"  "_s);
        press(lookup, "cmdInsertData");
    });
    press(editor, "Command4");
    EXPECT_EQ(in<QLineEdit>(editor, "txtCZName").text(), u"Ztracený dům"_s);
    EXPECT_EQ(in<QLineEdit>(editor, "txtPuvName").text(), u"Lost House"_s);
    EXPECT_EQ(in<QLineEdit>(editor, "txtRok").text(), u"1950"_s);
    EXPECT_EQ(in<QLineEdit>(editor, "txtStat").text(), u"USA , Eng , Německo"_s);
    EXPECT_EQ(in<QLineEdit>(editor, "txtRezie").text(), u""_s);
    EXPECT_EQ(in<QPlainTextEdit>(editor, "txtHerci").toPlainText(), u"Žofie Černá, René & syn"_s);
    EXPECT_EQ(in<QLabel>(editor, "lblNahled").text(), folder() + u"/data/webnahl.png"_s);

    // Without a picture, but with the box ticked, the preview goes.
    inNextWindow([](QWidget& lookup) { press(lookup, "cmdInsertData"); });
    press(editor, "Command4");
    EXPECT_EQ(in<QLabel>(editor, "lblNahled").text(), u""_s);
    EXPECT_EQ(in<QLineEdit>(editor, "txtCZName").text(), u"Ztracený dům"_s);
}
