#include "lookup/frmNetFind.h"

#include <QGroupBox>
#include <QListWidget>

#include "support/FakeBrowser.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"

namespace {

class FrmNetFindTest : public TemporaryProgram {
 protected:
    FrmNetFindTest() { window.show(); }

    FakeBrowser& search() { return *browsers.made[0]; }
    FakeBrowser& film() { return *browsers.made[1]; }

    /// The panels shown, and the size of the window.
    QString state() {
        QStringList shown;
        for (const char* panel : {"Frame2", "Frame1", "framData", "picWait"}) {
            if (control<QWidget>(window, panel).isVisible()) shown += QString::fromLatin1(panel);
        }
        return shown.join(u' ') + u" %1x%2"_s.arg(window.width()).arg(window.height());
    }
    void list(int films) {
        search().body.clear();
        for (int film = 0; film < films; ++film)
            search().body += u"<A class=zbozi title=x href=\"id_zbozi=%1&\">F%1</A>"_s.arg(film + 7);
        search().events.DocumentComplete(listUrl);
    }

    const Sites sites{.shop = u"http://shop"_s};
    const QString listUrl = u"http://shop/seznam_video.php"_s;
    FakeBrowsers browsers;
    frmNetFind window{sites, browsers};
};

}  // namespace

TEST_F(FrmNetFindTest, BrowserEventsLeadFromTheFormToTheListToTheFilm) {
    EXPECT_EQ(film().visited, QStringList(at(u"data/null.htm"_s)));
    EXPECT_EQ(search().visited, QStringList(at(u"data/finddvd.htm"_s)));
    for (const QString& other : {listUrl + u"?x=1"_s, u"https://shop/seznam_video.php"_s, u""_s}) {
        search().events.BeforeNavigate2(other);
        search().events.DocumentComplete(other);
    }
    for (const QString& other : {u"file://"_s + film().visited[0], u""_s, u"http:///"_s})
        film().events.DocumentComplete(other);
    EXPECT_EQ(state(), u" 559x393"_s);

    window.move(30, 40);
    search().events.BeforeNavigate2(listUrl);
    EXPECT_EQ(state(), u"Frame2 402x218"_s);
    EXPECT_FALSE(window.rect().intersects(search().widget().geometry()));
    list(3);
    EXPECT_EQ(control<QGroupBox>(window, "Frame1").title(), u"Nalezeno 3 záznamů"_s);
    EXPECT_EQ(control<QListWidget>(window, "List1").currentRow(), 0);
    control<QListWidget>(window, "List1").clearSelection();
    control<QPushButton>(window, "cmdDataGet").click();
    EXPECT_EQ(state(), u"Frame1 402x218"_s);
    control<QListWidget>(window, "List1").setCurrentRow(1);
    control<QPushButton>(window, "cmdDataGet").click();
    EXPECT_EQ(state(), u"Frame2 402x218"_s);
    EXPECT_EQ(film().visited.last(), u"http://shop/zbozi_video.php?id_zbozi=8"_s);

    film().body = u"<H2 class=title1>Dům<A>"_s;
    film().events.DocumentComplete(film().visited.last());
    EXPECT_EQ(state(), u"Frame2 framData 559x393"_s);
    EXPECT_EQ(window.pos(), QPoint(30, 40));
    EXPECT_EQ(control<QWidget>(window, "framData").pos(), QPoint(3, 3));
    EXPECT_EQ(film().stops, 1);
    EXPECT_TRUE(window.result().withPicture);
    EXPECT_EQ(window.result().czechTitle + window.result().picturePath, u"Dům"_s);
}

TEST_F(FrmNetFindTest, TwentyFilmsAreTooMany) {
    list(0);
    EXPECT_FALSE(control<QPushButton>(window, "cmdDataGet").isEnabled());
    list(19);
    EXPECT_TRUE(control<QPushButton>(window, "cmdDataGet").isEnabled());
    list(20);
    EXPECT_EQ(outside.owner(), &window);
    EXPECT_EQ(outside.told(),
              u"Bylo nalezeno více než 20 záznamů,upřesněte zadání! |64|Hledání přerušeno:"_s);
    EXPECT_EQ(control<QListWidget>(window, "List1").count(), 20);
    search().body = u"<A class=zbozi title=x href=\"id_zbozi=7\">A</A>"_s;
    EXPECT_EQ(failureOf([this] { search().events.DocumentComplete(listUrl); }), errors::invalidCall);
}

TEST_F(FrmNetFindTest, KeysWhileAFilmIsReadDoNotLeaveTheWindow) {
    list(1);
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(film().visited.last(), u"http://shop/zbozi_video.php?id_zbozi=7"_s);
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(window.focusWidget() != nullptr ? window.focusWidget() : &window, key);
    };
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Return})
        press(key);
    // While the page is cut, the buttons of the data are shown already.
    film().stopped = [&] {
        for (int step = 0; step < 20; ++step) {
            press(Qt::Key_Return);
            press(Qt::Key_Tab);
        }
    };
    film().body = u"<H2 class=title1>Dům<A>"_s;
    film().events.DocumentComplete(film().visited.last());
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.VlozitData);
    press(Qt::Key_Return);
    EXPECT_TRUE(window.VlozitData);
}

TEST_F(FrmNetFindTest, ProgressIsRoundedToEvenPercent) {
    const std::tuple<int, int, QString> cases[] = {{1, 8, u"12%"_s}, {3, 8, u"38%"_s}, {3, 0, u"0%"_s}};
    for (const auto& [progress, maximum, shown] : cases) {
        (maximum == 0 ? film() : search()).events.ProgressChange(progress, maximum);
        EXPECT_EQ(control<QLabel>(window, "lblProg").text(), shown);
    }
}

TEST_F(FrmNetFindTest, TheFormIsFilledInTheBytesThatTheShopReads) {
    EXPECT_EQ(failureOf([this] { window.PredpripravSTR(u"x"_s); }), errors::fileNotFound);
    write(u"data/finddvd2.htm"_s, "\xE8\r\n%%N%%,%%n%%,%%N%%");
    window.PredpripravSTR(u"  Škrtič  "_s);
    EXPECT_EQ(content(search().visited.last()), "\xE8\r\n\xA9krti\xE8,%%n%%,\xA9krti\xE8");
    EXPECT_EQ(search().visited.last(), at(u"data/finddvdx.htm"_s));
}

TEST_F(FrmNetFindTest, OnlyTheAcceptingButtonLeavesAResult) {
    for (const char* button : {"Command4", "Command5", "Command1", "Escape"}) {
        window.show();
        auto* pressed = window.findChild<QPushButton*>(QLatin1String(button));
        const bool accepted = button == std::string_view("Command4");
        window.VlozitData = !accepted;
        pressed != nullptr ? pressed->click() : QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_EQ(window.VlozitData, accepted);
        EXPECT_FALSE(window.isVisible());
    }
    control<QPushButton>(window, "Command4").click();  // queued behind the click that closed the window
    EXPECT_FALSE(window.VlozitData);
}
