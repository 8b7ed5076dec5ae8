#include <QBuffer>
#include <QImage>
#include <QTcpServer>
#include <QTcpSocket>

#include "core/Sites.h"
#include "support/filmPages.h"
#include "system/DesktopProgram.h"

using namespace Qt::StringLiterals;

namespace {

/// The real program from start to end, with the question for a newer version.
class RoadTest : public DesktopProgram {
 protected:
    RoadTest() { settings().setValue(u"Settings/ShowNewVer"_s, u"A"_s); }

    void serve(const QString& address, const QString& page) { web.serve(address, {.body = page.toUtf8()}); }
    /// Leaves the offer of a newer version, which comes once the main window stands.
    QString pastTheOffer() {
        const QString offer = screen.waitForWindow(u"^Nov.* verze je k dispozici!$"_s);
        EXPECT_FALSE(offer.isEmpty());
        QString master = screen.waitForWindow(mainWindow);
        screen.press(offer, {u"Escape"_s});
        EXPECT_TRUE(screen.waitUntilGone(u"^Nov.* verze je k dispozici!$"_s));
        return master;
    }
    void end(const QString& master, QProcess& program) {
        screen.press(master, {u"alt+d"_s, u"k"_s});
        expectEnd(program, 0);
    }

    const Sites sites = Sites::compiledIn();
};

}  // namespace

TEST_F(RoadTest, OneFilmGoesFromNothingToAPrintedList) {
    serve(sites.update + u"/podpora/files/dvdkalver.asp"_s, u"1-0-24"_s);
    serve(sites.filmDb + u"/hledani-filmu-hercu-reziseru-ve-filmove-databazi/?search=dum"_s,
          filmPages::searchPage({{u"1-DUM/"_s, u"Dům"_s}}));
    serve(sites.filmDb + u"/film/1-DUM/"_s, filmPages::plainPage(u"87"_s));
    serve(sites.filmDb + u"/film/1-DUM/?text=87"_s, filmPages::fullPage({}, sites.filmDb2));
    serve(sites.filmDb2 + u"/title/tt0123456"_s, filmPages::imdbPage(u"Lost House (1999)"_s));
    QImage image(20, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray poster;
    QBuffer buffer(&poster);
    image.save(&buffer, "PNG");
    web.serve(sites.filmDb + u"/posters/1/123.png"_s, {.body = poster, .type = "image/png"});

    auto program = start();
    const QString master = pastTheOffer();
    ASSERT_FALSE(master.isEmpty());
    screen.click(master, 40, 38);  // "Nový"
    const QString editor = screen.waitForWindow(u"^DVD Film$"_s);
    ASSERT_FALSE(editor.isEmpty());
    screen.click(editor, 250, 53);
    screen.type(editor, u"dum"_s);
    screen.click(editor, 510, 53);
    const QString lookup = screen.waitForWindow(u"^Vyhledat v .*SFD$"_s);
    ASSERT_FALSE(lookup.isEmpty());
    screen.press(lookup, {u"Return"_s});
    screen.click(lookup, 580, 366);  // "Načti data"
    screen.click(lookup, 265, 366);  // "Vložit data"
    ASSERT_TRUE(screen.waitUntilGone(u"^Vyhledat v .*SFD$"_s));
    screen.click(editor, 412, 372);  // "Uložit"
    ASSERT_TRUE(screen.waitUntilGone(u"^DVD Film$"_s));
    screen.click(master, 490, 38);  // "Tisknout"
    const QString lists = screen.waitForWindow(u"^Tisk seznamu$"_s);
    ASSERT_FALSE(lists.isEmpty());
    screen.click(lists, 260, 30);  // "Podrobný seznam"
    EXPECT_EQ(
        seen().replace(u'\u00A0', u' ').simplified(),
        u"Seznam DVD Ztracený dům (1) Žánr: Drama, Komedie Délka: 118 Stát: USA , Kanada Rok: 1999 Zvuk: "
        "Český dabing Příběh domu, který se ztratil. Herci: Žofie Černá, René & syn 20x30"_s);
    screen.press(lists, {u"Escape"_s});
    ASSERT_TRUE(screen.waitUntilGone(u"^Tisk seznamu$"_s));
    end(master, *program);

    // The same catalogue once more.
    program = start();
    const QString again = pastTheOffer();
    EXPECT_EQ(text("SELECT KatCisl || '|' || CZJm || '|' || PuvJm || '|' || Zanr || '|' || Stat || '|' || "
                   "Rok || '|' || "
                   "Delka || '|' || Rezie || '|' || Herci || '|' || Obsah FROM tDVD"),
              u"1|Ztracený dům|Lost House|Drama, Komedie|USA , Kanada|1999|118|Jan Novák|"
              "Žofie Černá, René & syn|Příběh domu, který se ztratil."_s);
    const sqlite::Database store(pictures(), sqlite::Database::Mode::readWrite);
    EXPECT_EQ(store.number("SELECT PicSize FROM tPicture WHERE PicDVDID=1 AND PicSkup='N' AND PicTyp='png'"),
              poster.size());
    end(again, *program);
    EXPECT_EQ(settings().value(u"Settings/ShowNewVer"_s).toString(), u"A"_s);
}

TEST_F(RoadTest, AnUpdateHostThatDoesNotAnswerKeepsNothingFromTheScreen) {
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    qputenv("http_proxy", u"http://127.0.0.1:%1"_s.arg(silent.serverPort()).toUtf8());
    auto program = start();
    const QString master = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(master.isEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&silent] { return silent.hasPendingConnections(); }, 60000));
    EXPECT_TRUE(screen.hasWindow(mainWindow));
    QTcpSocket* const question = silent.nextPendingConnection();
    silent.pauseAccepting();
    question->abort();
    silent.close();  // whoever asks again is refused
    end(master, *program);
}

TEST_F(RoadTest, TheUpdateHostIsAskedForTheExactSettingOnlyAndTheSplashEndsByItself) {
    const QString question = sites.update + u"/podpora/files/dvdkalver.asp"_s;
    serve(question, u"1-0-23"_s);
    for (const QString& setting : {u"N"_s, u"a"_s, u""_s, u"A"_s}) {
        SCOPED_TRACE(setting.toStdString());
        settings().setValue(u"Settings/ShowNewVer"_s, setting);
        // Once without a key.
        const auto program = setting == u"A" ? screen.start(folder() + u"/kalvera"_s, folder()) : start();
        const QString master = screen.waitForWindow(mainWindow);
        ASSERT_FALSE(master.isEmpty());
        end(master, *program);
        EXPECT_EQ(web.targets(), setting == u"A" ? QStringList{question} : QStringList());
    }
}

TEST_F(RoadTest, AnAnswerThatIsNoVersionEndsTheProgramOverItsMainWindow) {
    serve(sites.update + u"/podpora/files/dvdkalver.asp"_s, u"<html>Not found</html>"_s);
    const auto program = start();
    ASSERT_FALSE(screen.waitForWindow(mainWindow).isEmpty());
    const QString box = screen.waitForWindow(splash);  // titled as the splash picture is, which has gone
    ASSERT_FALSE(box.isEmpty());
    EXPECT_TRUE(screen.hasWindow(mainWindow));
    screen.press(box, {u"Return"_s});
    expectEnd(*program, 1);
}
