#include "system/RealProgram.h"

using StartTest = RealProgram;

TEST_F(StartTest, TheProgramRunsUntilItsLastWindowIsClosed) {
    sql("INSERT INTO tDVD (KatCisl, CZJm, Jazyk) VALUES ('1', 'Čáp', 0)");
    start();
    const QString master = screen.waitForWindow(mainWindow);
    screen.press(master, u"alt+p m"_s);
    const QString rental = screen.waitForWindow(u"^P.*j.*ovna$"_s);
    screen.press(master, u"alt+d k"_s);
    screen.waitUntilGone(mainWindow);
    screen.click(rental, 300, 36);  // a new customer
    screen.press(screen.waitForWindow(u"^U.*ivatel$"_s), u"Escape"_s);
    screen.waitUntilGone(u"^U.*ivatel$"_s);
    screen.press(rental, u"Escape"_s);
    expectEnd(0);
    EXPECT_EQ(settings().value(u"Settings/ColSie"_s), u"900|2500|1200|1200|1000|1440|1440|"_s);
    EXPECT_FALSE(settings().contains(u"Settings/Covers"_s));
    EXPECT_FALSE(QFile::exists(catalogue() + u"-journal"_s));
}

TEST_F(StartTest, OnlyAFileThatIsNamedLikeACatalogueIsOpened) {
    const struct {
        QString file;
        QString box;
        bool opens;
    } cases[] = {{u"none.ddb"_s, u"^Chyba:$"_s, false},
                 {u"katalog.mdb"_s, u"^Chyba:$"_s, false},
                 {u"damaged.ddb"_s, u"^Chyba .*: -?[0-9]+$"_s, true},
                 {u"aDDBook.mdb"_s, u""_s, true}};
    const QByteArray whole = content(catalogue());
    write(u"katalog.mdb"_s, whole);
    write(u"damaged.ddb"_s, whole.first(9000));
    write(u"aDDBook.mdb"_s, whole);
    for (const auto& [file, box, opens] : cases) {
        SCOPED_TRACE(file.toStdString());
        settings().setValue(u"Settings/ActDB"_s, at(file));
        start();
        if (!box.isEmpty()) screen.press(screen.waitForWindow(box), u"Return"_s);
        opens ? leave() : expectEnd(0);
        EXPECT_EQ(settings().contains(u"Settings/ColSie"_s), opens);
    }
    EXPECT_FALSE(QFile::exists(at(u"none.ddb"_s)));
    EXPECT_EQ(content(u"damaged.ddb"_s).size(), 9000);
}

TEST_F(StartTest, AnInstalledProgramCreatesACatalogueForItsUser) {
    QDir here(folder());
    ASSERT_TRUE(here.mkpath(u"usr/bin"_s) && here.mkpath(u"usr/share/kalvera"_s));
    ASSERT_TRUE(here.rename(u"data"_s, u"usr/share/kalvera/data"_s));
    ASSERT_TRUE(here.rename(u"kalvera"_s, u"usr/bin/kalvera"_s));
    start(u"usr/bin/kalvera"_s);
    leave();
    const QFileInfo own(at(u".local/share/BremDVDKalvera/data/data.ddb"_s));
    EXPECT_TRUE(own.exists());
    EXPECT_EQ(own.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}
