#include <QTcpServer>

#include "support/pictures.h"
#include "system/RealProgram.h"

namespace {

/// The real program with the real browser engine.
class ShopTest : public RealProgram {
 protected:
    ShopTest() {
        // The engine and the graphics driver below it still hold memory when the program ends, and the search
        // for leaks can hang on their threads.
        screen.environment.insert(u"ASAN_OPTIONS"_s,
                                  qEnvironmentVariable("ASAN_OPTIONS") + u":detect_leaks=0"_s);
        QFile::copy(QStringLiteral(KALVERA_BROWSER), at(u"libkalvera_browser.so"_s));
        for (const QString& page : {u"null.htm"_s, u"finddvd.htm"_s, u"finddvd2.htm"_s})
            QFile::copy(QStringLiteral(KALVERA_PAGES "/") + page, at(u"data/"_s + page));
    }

    void addFilm(const QString& title) {
        sql(u"INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES (1, '1', '%1', 0)"_s.arg(title)
                .toUtf8()
                .constData());
    }
    /// Starts the program, opens the film in the editor and looks it up in the shop.
    void openLookup() {
        start();
        master = screen.waitForWindow(mainWindow);
        screen.click(master, 120, 38);  // "Uprav"
        editor = screen.waitForWindow(editorWindow);
        screen.click(editor, 473, 53);
        lookup = screen.waitForWindow(lookupWindow);
    }
    /// Leaves the lookup and the editor and ends the program.
    void leaveLookup() {
        screen.press(lookup, u"Escape"_s);
        screen.waitUntilGone(lookupWindow);
        screen.press(editor, u"Escape"_s);
        screen.waitUntilGone(editorWindow);
        leave();
    }

    const QString list = sites.shop + u"/seznam_video.php"_s;
    const QString lookupWindow = u"^Vyhled.*Internetu$"_s;
    QString master, editor, lookup;
};

const char listPage[] =
    R"(<p><a class="zbozi" title="Film 0" href="zbozi_video.php?id_zbozi=100&amp;x=1">Film 0</a></p>
    <p><a class="zbozi" title="Film 1" href="zbozi_video.php?id_zbozi=101&amp;x=1">
    <font style="color:green">Ztracený</font> dům</a></p>)";
const char filmPage[] =
    R"(<h2 class="title1">Ztracený dům<a name="x">*</a></h2><table>
    <tr><td>Originální název:</td><td width="80%">&nbsp;</td></tr>
    <tr><td>Žánr:</td><td width="80%">Drama</td></tr>
    <tr><td>Popis:</td>
    <td width="80%"><table><tr><td>x</td></tr></table>Příběh domu,<br>který se ztratil.</td></tr>
    </table><a href='javascript:open_wnd_photo("1")'><img src="/images/1.png"></a>)";

}  // namespace

TEST_F(ShopTest, AFilmFoundInTheShopIsStored) {
    const QByteArray utf8 = "text/html; charset=utf-8";
    const QString image = sites.shop + u"/images/1.png"_s;
    const QByteArray picture = pictureOf(qRgb(255, 0, 0), "PNG", {20, 30});
    web.serve(list, {.body = listPage, .type = utf8});
    // The list may come between two of the keys, which then read its first film.
    for (const QString& id : {u"100"_s, u"101"_s})
        web.serve(sites.shop + u"/zbozi_video.php?id_zbozi="_s + id, {.body = filmPage, .type = utf8});
    web.serve(image, {.body = picture, .type = "image/png"});
    addFilm(u"\"Šťastný\" Žižka & čas"_s);
    openLookup();
    VirtualScreen::expect([this] { return screen.hasHeight(lookup, 218); }, u"the search"_s);
    // The list is as high as the search, during which these keys do nothing. Once a film is being read they
    // would press its buttons.
    VirtualScreen::expect(
        [&] {
            screen.press(lookup, u"Home Down Return"_s);
            return QTest::qWaitFor([this] { return screen.hasHeight(lookup, 393); }, 3000);
        },
        u"the film"_s);
    VirtualScreen::expect([&] { return web.targets().contains(image); }, image);
    screen.click(lookup, 407, 370);  // "Vložit data"
    screen.waitUntilGone(lookupWindow);
    screen.click(editor, 412, 372);  // "Uložit"
    screen.waitUntilGone(editorWindow);
    leave();
    // In ISO 8859-2; of the letters that Windows-1250 has elsewhere, only "ť" keeps its code.
    EXPECT_EQ(web.targets().value(0), list + u" nazev=%22%A9%9Dastn%FD%22+%AEi%BEka+%26+%E8as"_s);
    EXPECT_EQ(text("SELECT CZJm || '|' || PuvJm || '|' || Zanr || '|' || Obsah FROM tDVD"),
              u"Ztracený dům| |Drama|Příběh domu,který se ztratil."_s);
    EXPECT_EQ(text(pictures(), "SELECT PicDVDID || PicSkup || PicTyp || PicSize FROM tPicture"),
              u"1Npng%1"_s.arg(picture.size()));
}

TEST_F(ShopTest, ATitleCannotReadLocalFilesOrLeadElsewhere) {
    write(u"secret"_s, "SECRET");
    addFilm(
        u"</textarea></plaintext><meta http-equiv=\"refresh\" content=\"0; url=%2?refreshed\">"
        "<script>try { x=new XMLHttpRequest; x.open(\"GET\",\"file://%1\",false); x.send(); "
        "y=x.responseText } catch (e) { y=\"no\" } location=\"%2?\"+y</script>"_s.arg(at(u"secret"_s), list));
    openLookup();
    VirtualScreen::expect([this] { return !web.targets().isEmpty(); }, list);
    EXPECT_FALSE(web.targets().join(u' ').contains(u"SECRET"_s)) << web.targets().join(u' ').toStdString();
    // What is sent is the whole title, as a text.
    EXPECT_TRUE(web.targets().value(0).startsWith(list + u" nazev=%3C%2Ftextarea%3E"_s));
    EXPECT_FALSE(web.targets().join(u' ').contains(list + u'?')) << web.targets().join(u' ').toStdString();
    leaveLookup();
}

TEST_F(ShopTest, TheWindowStaysUsableWhateverTheShopAnswers) {
    QTcpServer silent;  // accepts nothing
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    WebServer looping;
    looping.serve(list, {.body = "<body><script>for (;;);</script></body>"});
    addFilm(u"zuz"_s);
    for (const QString& root :
         {u"http://127.0.0.1:%1"_s.arg(silent.serverPort()), looping.root(), web.root()}) {
        screen.environment.insert(u"http_proxy"_s, root);
        openLookup();
        VirtualScreen::expect([this] { return screen.hasHeight(lookup, 218); }, u"the search"_s);
        leaveLookup();
    }
}
