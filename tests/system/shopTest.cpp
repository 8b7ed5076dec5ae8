#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QTcpServer>

#include "core/Sites.h"
#include "support/WebServer.h"
#include "support/shopPages.h"
#include "system/RealProgram.h"

using namespace Qt::StringLiterals;

namespace {

/// The real program with the real browser engine, and a proxy that stands in for the web.
class ShopTest : public RealProgram {
 protected:
    ~ShopTest() override {
        qunsetenv("http_proxy");
        qputenv("ASAN_OPTIONS", sanitizer_);
    }

    void SetUp() override {
        RealProgram::SetUp();
        // The engine and the graphics driver under it hold memory when the program ends, and the search for
        // leaks can stall on their threads. All else is still watched in a build with sanitizers.
        qputenv("ASAN_OPTIONS", sanitizer_ + ":detect_leaks=0");
        ASSERT_TRUE(QFile::copy(QStringLiteral(KALVERA_BROWSER), folder() + u"/libkalvera_browser.so"_s));
        for (const QString& page : {u"null.htm"_s, u"finddvd.htm"_s, u"finddvd2.htm"_s})
            ASSERT_TRUE(QFile::copy(QStringLiteral(KALVERA_PAGES "/") + page, folder() + u"/data/"_s + page));
    }
    void useProxy(const QString& root) { qputenv("http_proxy", root.toUtf8()); }

    /// Starts the program, opens a new film with a title, and the lookup in the shop.
    void openLookup(const QString& title) {
        program = start();
        master = screen.waitForWindow(mainWindow);
        ASSERT_FALSE(master.isEmpty());
        screen.click(master, 40, 38);  // "Nový"
        editor = screen.waitForWindow(u"^DVD Film$"_s);
        ASSERT_FALSE(editor.isEmpty());
        screen.click(editor, 250, 53);
        if (!title.isEmpty()) screen.type(editor, title);
        screen.click(editor, 473, 53);
        lookup = screen.waitForWindow(lookupWindow);
        ASSERT_FALSE(lookup.isEmpty());
    }
    /// Leaves the editor without saving and ends the program.
    void leave() {
        screen.press(editor, {u"Escape"_s});
        ASSERT_TRUE(screen.waitUntilGone(u"^DVD Film$"_s));
        screen.press(master, {u"alt+d"_s, u"k"_s});
        expectEnd(*program, 0);
    }

    const Sites sites = Sites::compiledIn();
    const QByteArray utf8 = "text/html; charset=utf-8";
    const QString lookupWindow = u"^Vyhled.*Internetu$"_s;
    const QByteArray sanitizer_ = qgetenv("ASAN_OPTIONS");
    std::unique_ptr<QProcess> program;
    QString master;
    QString editor;
    QString lookup;
};

}  // namespace

TEST_F(ShopTest, AFilmOfTheShopStandsInTheListAndInTheFiles) {
    WebServer web;
    useProxy(web.root());
    QImage image(20, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray picture;
    QBuffer buffer(&picture);
    image.save(&buffer, "PNG");
    web.serve(sites.shop + u"/seznam_video.php"_s, {.body = shopPages::listPage(3).toUtf8(), .type = utf8});
    for (const int film : {100, 101, 102}) {
        web.serve(sites.shop + u"/zbozi_video.php?id_zbozi=%1"_s.arg(film),
                  {.body = shopPages::filmPage().toUtf8(), .type = utf8});
    }
    web.serve(sites.shop + u"/images/1.png"_s, {.body = picture, .type = "image/png"});

    ASSERT_NO_FATAL_FAILURE(openLookup(u"zuz"_s));
    ASSERT_TRUE(screen.waitForHeight(lookup, 218));
    // The list is as high as the panel before it, where these keys do nothing.
    int attempts = 0;
    do {
        screen.press(lookup, {u"Home"_s, u"Down"_s, u"Return"_s});
    } while (!screen.waitForHeight(lookup, 393, 3000) && ++attempts < 20);
    ASSERT_LT(attempts, 20);
    screen.click(lookup, 407, 370);  // "Vložit data"
    ASSERT_TRUE(screen.waitUntilGone(lookupWindow));
    screen.click(editor, 412, 372);  // "Uložit"
    ASSERT_TRUE(screen.waitUntilGone(u"^DVD Film$"_s));
    screen.press(master, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
    EXPECT_EQ(web.posts(), QByteArrayList{"nazev=zuz"});
    EXPECT_EQ(
        text("SELECT CZJm || '|' || PuvJm || '|' || Zanr || '|' || Stat || '|' || Rok || '|' || Delka || '|' "
             "|| Rezie || '|' || Herci || '|' || Obsah FROM tDVD"),
        u"Ztracený dům| |Drama|USA|1999|118|Jan Novák|Žofie Černá|Příběh domu,který se ztratil."_s);
    const sqlite::Database store(pictures(), sqlite::Database::Mode::readWrite);
    EXPECT_EQ(store.number("SELECT PicSize FROM tPicture WHERE PicDVDID=1 AND PicSkup='N' AND PicTyp='png'"),
              picture.size());
}

TEST_F(ShopTest, CzechLettersReachTheShopAsItReadsThemAndManyFilmsAreTold) {
    WebServer web;
    useProxy(web.root());
    web.serve(sites.shop + u"/seznam_video.php"_s, {.body = shopPages::listPage(25).toUtf8(), .type = utf8});
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES (1, '1', '\"Šťastný\" Žižka & čas', 0)");
    program = start();
    master = screen.waitForWindow(mainWindow);
    screen.click(master, 120, 38);  // "Uprav"
    editor = screen.waitForWindow(u"^DVD Film$"_s);
    ASSERT_FALSE(editor.isEmpty());
    screen.click(editor, 473, 53);
    const QString box = screen.waitForWindow(u"^Hled.*:$"_s);
    ASSERT_FALSE(box.isEmpty());
    // In ISO 8859-2; of the letters that it has elsewhere than Windows-1250, only the t keeps its code.
    EXPECT_EQ(web.posts(), QByteArrayList{"nazev=%22%A9%9Dastn%FD%22+%AEi%BEka+%26+%E8as"});
    screen.press(box, {u"Return"_s});
    lookup = screen.waitForWindow(lookupWindow);
    screen.press(lookup, {u"Escape"_s});
    ASSERT_TRUE(screen.waitUntilGone(lookupWindow));
    leave();
}

TEST_F(ShopTest, ATitleCannotReadLocalFiles) {
    WebServer web;
    useProxy(web.root());
    QFile secret(folder() + u"/secret"_s);
    ASSERT_TRUE(secret.open(QFile::WriteOnly));
    secret.write("SECRET");
    secret.close();
    sql((u"INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES (1, '1', '</textarea><script>try { x=new "
         "XMLHttpRequest; x.open(\"GET\",\"file://%1\",false); x.send(); y=x.responseText } catch (e) { "
         "y=\"no\" } "
         "location=\"%2/seznam_video.php?\"+y</script>', 0)"_s.arg(secret.fileName(), sites.shop))
            .toUtf8()
            .constData());
    program = start();
    master = screen.waitForWindow(mainWindow);
    screen.click(master, 120, 38);  // "Uprav"
    editor = screen.waitForWindow(u"^DVD Film$"_s);
    ASSERT_FALSE(editor.isEmpty());
    screen.click(editor, 473, 53);
    lookup = screen.waitForWindow(lookupWindow);
    ASSERT_TRUE(web.waitForRequest());
    EXPECT_FALSE(web.targets().join(u' ').contains(u"SECRET"_s)) << web.targets().join(u' ').toStdString();
    screen.press(lookup, {u"Escape"_s});
    ASSERT_TRUE(screen.waitUntilGone(lookupWindow));
    leave();
}

TEST_F(ShopTest, AShopThatDoesNotAnswerOrLoopsLeavesTheWindowUsable) {
    // Nobody accepts what comes in.
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    WebServer web;
    web.serve(sites.shop + u"/seznam_video.php"_s, {.body = "<body><script>for (;;);</script></body>"});
    WebServer broken;
    for (const QString& root : {u"http://127.0.0.1:%1"_s.arg(silent.serverPort()), web.root()}) {
        useProxy(root);
        ASSERT_NO_FATAL_FAILURE(openLookup(u"zuz"_s));
        ASSERT_TRUE(screen.waitForHeight(lookup, 218));  // searching
        screen.press(lookup, {u"Escape"_s});
        ASSERT_TRUE(screen.waitUntilGone(lookupWindow));
        ASSERT_NO_FATAL_FAILURE(leave());
    }
    // Other answers are a list without films.
    useProxy(broken.root());
    ASSERT_NO_FATAL_FAILURE(openLookup(u"zuz"_s));
    ASSERT_TRUE(screen.waitForHeight(lookup, 218));
    screen.press(lookup, {u"Escape"_s});
    ASSERT_TRUE(screen.waitUntilGone(lookupWindow));
    leave();
}
