#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

#include "catalogue/frmMaster.h"
#include "core/mFunction.h"
#include "services/frmAbout.h"
#include "services/frmNewVersion.h"
#include "services/frmSplash.h"
#include "services/mHelp.h"
#include "support/TemporaryProgram.h"
#include "support/clipped.h"
#include "toolkit/HelpWindow.h"

using namespace Qt::StringLiterals;

namespace {

class ServicesTest : public TemporaryProgram {
 protected:
    QString storedOffer() const { return CtiNastaveni(u"ShowNewVer"_s, u"(none)"_s); }

    const Sites sites{.update = u"http://update"_s};
};

HelpWindow* openHelp() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* help = qobject_cast<HelpWindow*>(window)) return help;
    }
    return nullptr;
}

}  // namespace

TEST_F(ServicesTest, TheSplashEndsByAKeyOrByItsTimer) {
    frmSplash splash;
    splash.show();
    EXPECT_EQ(splash.findChild<QLabel*>(u"lblVersion"_s)->text(), u"Version 1.0.23"_s);
    EXPECT_FALSE(splash.findChild<QLabel*>(u"picture"_s)->pixmap().isNull());
    QTest::mouseClick(&splash, Qt::LeftButton);
    EXPECT_TRUE(splash.isVisible());
    QTest::keyClick(&splash, Qt::Key_A);
    EXPECT_FALSE(splash.isVisible());
    splash.show();
    auto* timer = splash.findChild<QTimer*>(u"Timer1"_s);
    ASSERT_NE(timer, nullptr);
    EXPECT_EQ(timer->interval(), 5000);
    EXPECT_TRUE(timer->isActive());
    emit timer->timeout({});
    EXPECT_FALSE(splash.isVisible());
}

TEST_F(ServicesTest, TheOfferOfANewVersionIsStoredAtEachClosing) {
    for (const auto& [ticked, stored] : {std::pair(true, u"N"_s), {false, u"A"_s}}) {
        frmNewVersion window(sites);
        window.show();
        EXPECT_FALSE(window.findChild<QCheckBox*>()->isChecked());
        QTest::mouseClick(window.findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
        EXPECT_TRUE(window.isVisible());
        window.findChild<QCheckBox*>()->setChecked(ticked);
        if (ticked) {
            window.close();
        } else {
            QTest::mouseClick(window.findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
        }
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(storedOffer(), stored);
    }
    EXPECT_EQ(outside.opened, QStringList(2, u"http://update/podpora/files/setupupgrade.exe"_s));
}

TEST_F(ServicesTest, EnterNeverTicksTheOfferAway) {
    frmNewVersion window(sites);
    window.show();
    auto* box = window.findChild<QCheckBox*>();
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_FALSE(box->isChecked());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(storedOffer(), u"A"_s);
}

TEST_F(ServicesTest, TheMenuAsksForANewVersionWhateverTheSettingIs) {
    UlozNastaveni(u"ShowNewVer"_s, u"N"_s);
    frmMaster master(sites);
    master.show();
    auto* ask = master.findChild<QAction*>(u"smnuHelp_2"_s);
    ask->trigger();
    EXPECT_EQ(outside.boxes, QList({ScriptedOutside::Box{u"Máte nejaktuálnější verzi aplikace."_s, 64,
                                                         u"Dotaz na novou verzi"_s}}));
    outside.pages[u"http://update/podpora/files/dvdkalver.asp"_s] = "1-0-24";
    QTimer::singleShot(0, &master, [&master] {
        QWidget* window = QApplication::activeModalWidget();
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->windowTitle(), u"Nová verze je k dispozici!"_s);
        EXPECT_EQ(window->parentWidget(), &master);
        window->close();
    });
    ask->trigger();
    EXPECT_EQ(storedOffer(), u"A"_s);
    EXPECT_EQ(outside.boxes.size(), 1);
}

TEST_F(ServicesTest, TheHelpOpensAtItsContentsAndOnlyOnce) {
    EXPECT_EQ(CestaNapovedy(1), folder() + u"/data/napoveda.chm"_s);
    EXPECT_EQ(CestaNapovedy(2), u""_s);
    ZobrazNapovedu(1, u"Main"_s);
    EXPECT_EQ(outside.boxes.size(), 1);
    QFile broken(CestaNapovedy(1));
    ASSERT_TRUE(broken.open(QFile::WriteOnly) && broken.write("ITSF") == 4);
    broken.close();
    ZobrazNapovedu(1, u"Main"_s);
    EXPECT_EQ(outside.boxes.size(), 2);
    EXPECT_EQ(openHelp(), nullptr);
    broken.remove();
    ASSERT_TRUE(QFile::copy(QStringLiteral(KALVERA_HELP), CestaNapovedy(1)));
    ZobrazNapovedu(1, u"Main"_s);
    HelpWindow* help = openHelp();
    ASSERT_NE(help, nullptr);
    ZobrazNapovedu(1, u"Main"_s);
    EXPECT_EQ(openHelp(), help);
    auto* contents = help->findChild<QTreeWidget*>(u"Obsah"_s);
    auto* page = help->findChild<QTextBrowser*>();
    ASSERT_GT(contents->topLevelItemCount(), 3);
    ASSERT_GT(contents->topLevelItem(1)->childCount(), 0);
    EXPECT_EQ(page->source().path(), u"/uvod.html"_s);
    EXPECT_GT(page->toPlainText().size(), 200);
    for (int step = 0; step < 8; ++step) {
        const QTreeWidgetItem* next = contents->itemBelow(contents->currentItem());
        QTest::keyClick(contents, Qt::Key_Down);
        ASSERT_EQ(contents->currentItem(), next);
        EXPECT_EQ(page->source().path(), next->data(0, Qt::UserRole).toString());
        EXPECT_GT(page->toPlainText().size(), 200);
    }
    page->backward();
    EXPECT_EQ(page->source().path(), contents->currentItem()->data(0, Qt::UserRole).toString());
    contents->setCurrentItem(contents->topLevelItem(0));
    EXPECT_EQ(page->source().path(), u"/uvod.html"_s);
    emit page->anchorClicked(QUrl(u"modul.html"_s));
    EXPECT_EQ(contents->currentItem()->text(0), u"Modul výpůjček"_s);
    auto* trees = help->findChild<QTabWidget*>();
    trees->setCurrentIndex(1);
    ZobrazNapovedu(1, u"Main"_s);
    EXPECT_EQ(trees->currentIndex(), 0);
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(ServicesTest, TheHelpIsThereBesideAModalWindowAndGoesWithTheLastOne) {
    ASSERT_TRUE(QFile::copy(QStringLiteral(KALVERA_HELP), CestaNapovedy(1)));
    ZobrazNapovedu(1, u"Main"_s);
    HelpWindow* help = openHelp();
    ASSERT_NE(help, nullptr);
    auto* contents = help->findChild<QTreeWidget*>(u"Obsah"_s);
    {
        frmAbout about;
        QTimer::singleShot(0, &about, [&] {
            // By way of the window, as real keys come.
            contents->setFocus();
            QTest::keyClick(help->windowHandle(), Qt::Key_Down);
            about.close();
        });
        about.exec();
    }
    EXPECT_NE(contents->currentItem(), contents->topLevelItem(0));
    EXPECT_TRUE(help->isVisible());
    frmAbout last;
    last.show();
    QTimer::singleShot(0, &last, &QWidget::close);
    QTimer::singleShot(10000, &last, [] { QApplication::exit(1); });
    EXPECT_EQ(QApplication::exec(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(openHelp(), nullptr);
}

TEST_F(ServicesTest, CaptionsAreFullyReadable) {
    frmAbout about;
    about.show();
    EXPECT_EQ(about.findChild<QLabel*>(u"Label1"_s)->text(), u"Brem DVD Kalvéra 1.0.23"_s);
    EXPECT_EQ(clipped(about).join(u' '), u""_s);
    frmSplash splash;
    splash.show();
    EXPECT_EQ(clipped(splash).join(u' '), u""_s);
    QTest::keyClick(&about, Qt::Key_Return);
    EXPECT_FALSE(about.isVisible());
}
