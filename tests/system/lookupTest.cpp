#include <QBuffer>
#include <QImage>

#include "core/Sites.h"
#include "support/WebServer.h"
#include "support/filmPages.h"
#include "system/RealProgram.h"

using namespace Qt::StringLiterals;

namespace {

/// The real program with a proxy that stands in for the web.
class LookupTest : public RealProgram {
 protected:
    LookupTest() { qputenv("http_proxy", web.root().toUtf8()); }
    ~LookupTest() override { qunsetenv("http_proxy"); }

    WebServer web;
};

}  // namespace

TEST_F(LookupTest, AFilmFoundOnTheWebStandsInTheListAndInTheFiles) {
    const Sites sites = Sites::compiledIn();
    const auto serve = [&](const QString& address, const QString& page) {
        web.serve(address, {.body = page.toUtf8()});
    };
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
    const QString master = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(master.isEmpty());
    screen.click(master, 40, 38);  // "Nový"
    const QString editor = screen.waitForWindow(u"^DVD Film$"_s);
    ASSERT_FALSE(editor.isEmpty());
    screen.click(editor, 250, 53);
    screen.type(editor, u"dum"_s);
    screen.click(editor, 510, 53);
    const QString lookup = screen.waitForWindow(u"^Vyhledat v .SFD$|^Vyhledat v .*SFD$"_s);
    ASSERT_FALSE(lookup.isEmpty());
    screen.press(lookup, {u"Return"_s});
    screen.click(lookup, 580, 366);  // "Načti data"
    screen.click(lookup, 265, 366);  // "Vložit data"
    ASSERT_TRUE(screen.waitUntilGone(u"^Vyhledat v .*SFD$"_s));
    screen.click(editor, 412, 372);  // "Uložit"
    ASSERT_TRUE(screen.waitUntilGone(u"^DVD Film$"_s));
    screen.press(master, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    EXPECT_EQ(
        text("SELECT CZJm || '|' || PuvJm || '|' || Zanr || '|' || Stat || '|' || Rok || '|' || Delka || '|' "
             "|| Rezie || '|' || Herci || '|' || Obsah FROM tDVD"),
        u"Ztracený dům|Lost House|Drama, Komedie|USA , Kanada|1999|118|Jan Novák|"
        "Žofie Černá, René & syn|Příběh domu, který se ztratil."_s);
    const sqlite::Database store(pictures(), sqlite::Database::Mode::readWrite);
    EXPECT_EQ(store.number("SELECT PicSize FROM tPicture WHERE PicDVDID=1 AND PicSkup='N' AND PicTyp='png'"),
              poster.size());
}
