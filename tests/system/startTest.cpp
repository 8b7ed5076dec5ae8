#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "system/RealProgram.h"

using namespace Qt::StringLiterals;

namespace {

class StartTest : public RealProgram {};

}  // namespace

TEST_F(StartTest, TheProgramShowsItsWindowAndEndsWithKonec) {
    sql("INSERT INTO tDVD (KatCisl, CZJm, Jazyk) VALUES ('1', 'Čáp', 0)");
    const auto program = start();
    const QString window = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(window.isEmpty());
    screen.press(window, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    EXPECT_EQ(settings().value(u"Settings/ColSie"_s).toString(), u"900|2500|1200|1200|1000|1440|1440|"_s);
    EXPECT_FALSE(settings().contains(u"Settings/Covers"_s));
    EXPECT_FALSE(QFile::exists(catalogue() + u"-journal"_s));
}

TEST_F(StartTest, WithoutACatalogueABoxComesAndNoWindow) {
    ASSERT_TRUE(QFile::remove(catalogue()));
    const auto program = start();
    const QString box = screen.waitForWindow(u"^Chyba:$"_s);
    ASSERT_FALSE(box.isEmpty());
    EXPECT_FALSE(screen.hasWindow(mainWindow));
    screen.press(box, {u"Return"_s});
    expectEnd(*program, 0);
    EXPECT_FALSE(QFile::exists(catalogue()));
    EXPECT_FALSE(settings().contains(u"Settings/ColSie"_s));
}

TEST_F(StartTest, TheNameOfTheCatalogueDecidesWhetherItCounts) {
    QDir().mkpath(folder() + u"/.config"_s);
    const struct {
        QString name;
        bool passes;
    } cases[] = {{u"katalog.mdb"_s, false}, {u"aDDBook.mdb"_s, true}};
    for (const auto& [name, passes] : cases) {
        SCOPED_TRACE(name.toStdString());
        ASSERT_TRUE(QFile::copy(catalogue(), folder() + u'/' + name));
        {
            QSettings stored = settings();
            stored.setValue(u"Settings/ActDB"_s, QString(folder() + u'/' + name));
        }
        const auto program = start();
        const QString window = screen.waitForWindow(passes ? mainWindow : u"^Chyba:$"_s);
        ASSERT_FALSE(window.isEmpty());
        screen.press(window, passes ? QStringList{u"alt+d"_s, u"k"_s} : QStringList{u"Escape"_s});
        expectEnd(*program, 0);
    }
}

TEST_F(StartTest, ADamagedCatalogueIsToldAndTheProgramGoesOn) {
    ASSERT_TRUE(QFile::resize(catalogue(), 9000));
    const auto program = start();
    const QString box = screen.waitForWindow(u"^Chyba .*: -?[0-9]+$"_s);
    ASSERT_FALSE(box.isEmpty());
    screen.press(box, {u"Return"_s});
    const QString window = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(window.isEmpty());
    screen.press(window, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    EXPECT_EQ(QFileInfo(catalogue()).size(), 9000);
}

TEST_F(StartTest, AnInstalledProgramGivesItsUserACatalogueOfHisOwn) {
    // No data folder beside the executable, as where programs are installed; the ready-made files lie apart.
    QDir here(folder());
    ASSERT_TRUE(here.mkpath(u"usr/bin"_s) && here.mkpath(u"usr/share/kalvera"_s));
    ASSERT_TRUE(here.rename(u"data"_s, u"usr/share/kalvera/data"_s));
    ASSERT_TRUE(here.rename(u"kalvera"_s, u"usr/bin/kalvera"_s));
    const auto program = start(folder() + u"/usr/bin/kalvera"_s);
    const QString window = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(window.isEmpty());
    screen.press(window, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    const QFileInfo own(folder() + u"/.local/share/BremDVDKalvera/data/data.ddb"_s);
    EXPECT_TRUE(own.exists());
    EXPECT_EQ(own.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}
