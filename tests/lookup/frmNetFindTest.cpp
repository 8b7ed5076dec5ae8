#include "lookup/frmNetFind.h"

#include <QGroupBox>
#include <QListWidget>

#include "support/TemporaryProgram.h"
#include "support/windows.h"

using namespace Qt::StringLiterals;

namespace {

/// A browser that goes nowhere and tells what the test has it tell.
class FakeBrowser final : public Browser {
 public:
    FakeBrowser(QWidget& parent, Events told) : events(std::move(told)), widget_(new QWidget(&parent)) {}
    QWidget& widget() override { return *widget_; }
    void Navigate(const QString& urlOrPath) override { visited += urlOrPath; }
    void Stop() override { ++stops; }
    QString innerHTML() const override { return body; }

    Events events;
    QStringList visited;
    QString body;
    int stops = 0;

 private:
    QWidget* widget_;  // its parent's
};

class FakeBrowsers final : public BrowserFactory {
 public:
    std::unique_ptr<Browser> create(QWidget& parent, Browser::Events events) override {
        auto browser = std::make_unique<FakeBrowser>(parent, std::move(events));
        made += browser.get();
        return browser;
    }
    QList<FakeBrowser*> made;
};

class FrmNetFindTest : public TemporaryProgram {
 protected:
    frmNetFind& window() {
        if (!window_) {
            window_.emplace(sites, browsers);
            window_->show();
        }
        return *window_;
    }
    template <typename Control>
    Control& in(const char* name) {
        return control<Control>(window(), name);
    }
    FakeBrowser& search() { return *browsers.made[0]; }
    FakeBrowser& film() { return *browsers.made[1]; }
    /// Which panels are shown.
    QString state() {
        QStringList shown;
        for (const char* panel : {"Frame2", "Frame1", "framData", "picWait"}) {
            if (in<QWidget>(panel).isVisible()) shown += QString::fromLatin1(panel);
        }
        return shown.join(u' ') + u" %1x%2"_s.arg(window().width()).arg(window().height());
    }
    static QString links(int count) {
        QString page;
        for (int film = 0; film < count; ++film)
            page += u"<A class=zbozi title=x href=\"id_zbozi=%1&\">F%1</A>"_s.arg(film + 7);
        return page;
    }
    void list(int count) {
        search().body = links(count);
        search().events.DocumentComplete(listUrl);
    }

    const Sites sites{.shop = u"http://shop"_s};
    const QString listUrl = u"http://shop/seznam_video.php"_s;
    FakeBrowsers browsers;

 private:
    std::optional<frmNetFind> window_;
};

}  // namespace

TEST_F(FrmNetFindTest, GoesFromTheFormToTheListToTheFilmByWhatTheBrowsersTell) {
    EXPECT_EQ(state(), u" 559x393"_s);
    EXPECT_EQ(film().visited, QStringList(at(u"data/null.htm"_s)));
    EXPECT_EQ(search().visited, QStringList(at(u"data/finddvd.htm"_s)));
    film().events.DocumentComplete(u"file://"_s + film().visited[0]);
    for (const QString& other : {listUrl + u"?x=1"_s, u"https://shop/seznam_video.php"_s, u""_s}) {
        search().events.BeforeNavigate2(other);
        search().events.DocumentComplete(other);
    }
    film().events.DocumentComplete(u""_s);
    film().events.DocumentComplete(u"http:///"_s);
    EXPECT_EQ(state(), u" 559x393"_s);

    search().events.BeforeNavigate2(listUrl);
    EXPECT_EQ(state(), u"Frame2 402x218"_s);
    EXPECT_FALSE(window().rect().intersects(search().widget().geometry()));
    list(3);
    EXPECT_EQ(state(), u"Frame1 402x218"_s);
    EXPECT_EQ(in<QGroupBox>("Frame1").title(), u"Nalezeno 3 záznamů"_s);
    EXPECT_EQ(in<QListWidget>("List1").currentRow(), 0);
    in<QListWidget>("List1").clearSelection();
    in<QPushButton>("cmdDataGet").click();
    EXPECT_EQ(state(), u"Frame1 402x218"_s);
    in<QListWidget>("List1").setCurrentRow(1);
    in<QPushButton>("cmdDataGet").click();
    EXPECT_EQ(state(), u"Frame2 402x218"_s);
    EXPECT_EQ(film().visited.last(), u"http://shop/zbozi_video.php?id_zbozi=8"_s);

    film().body = u"<H2 class=title1>Dům<A>"_s;
    film().events.DocumentComplete(film().visited.last());
    EXPECT_EQ(state(), u"Frame2 framData 559x393"_s);
    EXPECT_EQ(in<QWidget>("framData").pos(), QPoint(3, 3));
    EXPECT_EQ(window().result().czechTitle, u"Dům"_s);
    EXPECT_EQ(film().stops, 1);
    EXPECT_TRUE(window().result().withPicture);
    EXPECT_EQ(window().result().picturePath, u""_s);
}

TEST_F(FrmNetFindTest, TwentyFilmsAreToldAsTooManyAndAnEmptyListCannotBeLoaded) {
    window();
    list(0);
    EXPECT_EQ(in<QGroupBox>("Frame1").title(), u"Nalezeno 0 záznamů"_s);
    EXPECT_FALSE(in<QPushButton>("cmdDataGet").isEnabled());
    list(19);
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_TRUE(in<QPushButton>("cmdDataGet").isEnabled());
    list(20);
    EXPECT_EQ(outside.told(),
              u"Bylo nalezeno více než 20 záznamů,upřesněte zadání! |64|Hledání přerušeno:"_s);
    EXPECT_EQ(in<QListWidget>("List1").count(), 20);
    search().body = u"<A class=zbozi title=x href=\"id_zbozi=7\">A</A>"_s;
    EXPECT_EQ(failureOf([this] { search().events.DocumentComplete(listUrl); }), errors::invalidCall);
}

TEST_F(FrmNetFindTest, ProgressIsShownInWholePercentHalvesToTheEvenOne) {
    window();
    const std::tuple<int, int, QString> cases[] = {
        {1, 8, u"12%"_s}, {3, 8, u"38%"_s}, {5, 1000, u"0%"_s}, {100, 100, u"100%"_s}, {3, 0, u"0%"_s}};
    for (const auto& [progress, maximum, shown] : cases) {
        (progress % 2 == 0 ? film() : search()).events.ProgressChange(progress, maximum);
        EXPECT_EQ(in<QLabel>("lblProg").text(), shown);
    }
}

TEST_F(FrmNetFindTest, TheFormIsFilledInTheBytesThatTheShopReads) {
    window();
    EXPECT_EQ(failureOf([this] { window().PredpripravSTR(u"x"_s); }), errors::fileNotFound);
    write(u"data/finddvd2.htm"_s, "\xA9\r\n%%N%%,%%n%%,%%N%%");
    window().PredpripravSTR(u"  Šťastný Žižka "_s);
    const QByteArray title(
        "\xA9\x9D"
        "astn\xFD \xAEi\xBEka");
    const QString filled = at(u"data/finddvdx.htm"_s);
    EXPECT_EQ(content(filled), "\xA9\r\n" + title + ",%%n%%," + title);
    EXPECT_EQ(search().visited.last(), filled);
    EXPECT_EQ(QFile::permissions(filled) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(FrmNetFindTest, OnlyTheAcceptingButtonLeavesAResult) {
    const std::pair<const char*, bool> buttons[] = {
        {"Command4", true}, {"Command5", false}, {"Command1", false}};
    window();
    for (const auto& [button, accepted] : buttons) {
        window().show();
        window().VlozitData = !accepted;
        in<QPushButton>(button).click();
        EXPECT_EQ(window().VlozitData, accepted) << button;
        EXPECT_FALSE(window().isVisible());
    }
    in<QPushButton>("Command4").click();  // behind the click that closed the window
    EXPECT_FALSE(window().VlozitData);
    window().show();
    window().VlozitData = true;
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_FALSE(window().VlozitData);
}
