#include <QAction>
#include <QCheckBox>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWindow>

#include "catalogue/frmMaster.h"
#include "core/mFunction.h"
#include "core/mVerze.h"
#include "services/frmAbout.h"
#include "services/frmNewVersion.h"
#include "services/frmSplash.h"
#include "services/mHelp.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"
#include "toolkit/HelpWindow.h"

namespace {

class ServicesTest : public TemporaryProgram {
 protected:
    QString storedOffer() const { return CtiNastaveni(u"ShowNewVer"_s, u"(none)"_s); }

    const Sites sites{.update = u"http://update"_s};
};

}  // namespace

TEST_F(ServicesTest, TheSplashScreenAndTheAboutBoxTellTheVersion) {
    frmSplash splash;
    splash.show();
    EXPECT_EQ(control<QLabel>(splash, "lblVersion").text(), u"Version "_s + verze::text());
    EXPECT_FALSE(control<QLabel>(splash, "picture").pixmap().isNull());
    QTest::mouseClick(&splash, Qt::LeftButton);
    EXPECT_TRUE(splash.isVisible());
    EXPECT_EQ(control<QTimer>(splash, "Timer1").interval(), 5000);
    frmAbout about;
    EXPECT_EQ(control<QLabel>(about, "Label1").text(), u"Brem DVD Kalvéra "_s + verze::text());
}

TEST_F(ServicesTest, TheOfferOfANewVersionIsStoredHoweverItIsClosed) {
    const std::tuple<bool, std::function<void(frmNewVersion&)>, QString> cases[] = {
        {true, [](QWidget& window) { window.close(); }, u"N"_s},
        {false, [](QWidget& window) { click(window, "Command2"); }, u"A"_s},
        {false, [](QWidget& window) { QTest::keyClick(window.findChild<QCheckBox*>(), Qt::Key_Return); },
         u"A"_s},
        {false, [](QWidget& window) { QTest::keyClick(window.focusWidget(), Qt::Key_Return); }, u"A"_s}};
    for (const auto& [ticked, close, stored] : cases) {
        UlozNastaveni(u"ShowNewVer"_s, u"?"_s);
        frmNewVersion window(sites);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        auto& box = *window.findChild<QCheckBox*>();
        EXPECT_FALSE(box.isChecked());
        if (ticked) click(window, "Command1");  // the download
        EXPECT_TRUE(window.isVisible());
        box.setChecked(ticked);
        close(window);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(storedOffer(), stored);
    }
    EXPECT_EQ(outside.opened, QStringList(u"http://update/podpora/files/setupupgrade.exe"_s));
}

TEST_F(ServicesTest, TheMenuChecksForANewVersionWhateverTheSettingIs) {
    UlozNastaveni(u"ShowNewVer"_s, u"N"_s);
    frmMaster master(sites);
    master.show();
    auto* check = master.findChild<QAction*>(u"smnuHelp_2"_s);
    check->trigger();
    EXPECT_EQ(outside.told(), u"Máte nejaktuálnější verzi aplikace.|64|Dotaz na novou verzi"_s);
    outside.pages[u"http://update/podpora/files/dvdkalver.asp"_s] = "9999-0-0";
    inModalWindow([&] { check->trigger(); },
                  [&](QWidget& window) {
                      EXPECT_EQ(window.windowTitle(), u"Nová verze je k dispozici!"_s);
                      EXPECT_EQ(window.parentWidget(), &master);
                      window.close();
                  });
    EXPECT_EQ(storedOffer(), u"A"_s);
    EXPECT_EQ(outside.told(), u""_s);
}

TEST_F(ServicesTest, TheHelpOpensOnceAndItsContentsFollowItsPages) {
    EXPECT_EQ(CestaNapovedy(1), at(u"data/napoveda.chm"_s));
    EXPECT_EQ(CestaNapovedy(2), u""_s);
    ZobrazNapovedu(1, u"Main"_s);
    write(CestaNapovedy(1), "ITSF");
    ZobrazNapovedu(1, u"Main"_s);
    EXPECT_EQ(std::exchange(outside.boxes, {}).size(), 2);
    EXPECT_EQ(shownWindow<HelpWindow>(), nullptr);
    QFile::remove(CestaNapovedy(1));
    ASSERT_TRUE(QFile::copy(QStringLiteral(KALVERA_HELP), CestaNapovedy(1)));
    ZobrazNapovedu(1, u"Main"_s);
    auto* help = shownWindow<HelpWindow>();
    ASSERT_NE(help, nullptr);

    auto& contents = control<QTreeWidget>(*help, "Obsah");
    auto& page = *help->findChild<QTextBrowser*>();
    const std::pair<std::function<void()>, QString> steps[] = {
        {[] {}, u"/uvod.html"_s},
        {[&] {
             for (int line = 0; line < 8; ++line)
                 QTest::keyClick(&contents, Qt::Key_Down);
         },
         u"/editor.html"_s},
        {[&] { page.backward(); }, u"/hledani-razeni.html"_s},
        {[&] { contents.setCurrentItem(contents.topLevelItem(0)); }, u"/uvod.html"_s},
        {[&] { emit page.anchorClicked(QUrl(u"modul.html"_s)); }, u"/modul.html"_s}};
    for (const auto& [step, shown] : steps) {
        step();
        EXPECT_EQ(page.source().path(), shown);
        EXPECT_EQ(contents.currentItem()->data(0, Qt::UserRole).toString(), shown);
        EXPECT_GT(page.toPlainText().size(), 200);
    }
    auto& trees = *help->findChild<QTabWidget*>();
    trees.setCurrentIndex(1);
    ZobrazNapovedu(1, u"Main"_s);
    EXPECT_EQ(shownWindow<HelpWindow>(), help);
    EXPECT_EQ(trees.currentIndex(), 0);
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(ServicesTest, TheHelpCanBeReadBesideAModalWindowAndClosesWithTheLastWindow) {
    ASSERT_TRUE(QFile::copy(QStringLiteral(KALVERA_HELP), CestaNapovedy(1)));
    ZobrazNapovedu(1, u"Main"_s);
    auto* help = shownWindow<HelpWindow>();
    ASSERT_NE(help, nullptr);
    auto& contents = control<QTreeWidget>(*help, "Obsah");
    frmAbout about;
    inModalWindow([&] { about.exec(); },
                  [&](QWidget&) {
                      contents.setFocus();
                      QTest::keyClick(help->windowHandle(), Qt::Key_Down);  // as real keys arrive
                      about.close();
                  });
    EXPECT_NE(contents.currentItem(), contents.topLevelItem(0));
    EXPECT_TRUE(help->isVisible());
    about.show();
    QTimer::singleShot(0, &about, &QWidget::close);
    QTimer::singleShot(10000, &about, [] { QApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(shownWindow<HelpWindow>(), nullptr);
}
