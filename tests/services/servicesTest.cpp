#include <QAction>
#include <QCheckBox>

#include "catalogue/frmMaster.h"
#include "core/mFunction.h"
#include "core/mVerze.h"
#include "services/frmAbout.h"
#include "services/frmNewVersion.h"
#include "services/frmSplash.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"

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
