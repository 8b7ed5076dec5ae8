#include <QImage>

#include "core/Sites.h"
#include "film/mObrazky.h"
#include "system/DesktopProgram.h"

using namespace Qt::StringLiterals;

namespace {

class PrintingTest : public DesktopProgram {};

}  // namespace

TEST_F(PrintingTest, AllFourListsOpenInABrowser) {
    QImage image(60, 93, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(folder() + u"/x.jpg"_s));
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Delka, Stat, Rok, Jazyk, Obsah, Herci, Nahled_ID) "
        "VALUES"
        "(1, '3', 'Žert', 'Drama', '77', 'ČSSR', '1968', 0, 'Příběh', 'J. Somr', 1),"
        "(2, '1', 'Čas sluhů', 'Drama', '111', 'ČSSR', '1989', 1, '', '', 0),"
        "(3, '2', 'Chyť doktora', 'Komedie', '91', 'ČR', '2007', 2, '', '', 0)");
    ASSERT_EQ(UlozNahled(1, folder() + u"/x.jpg"_s), 1);
    auto program = start();
    const QString master = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(master.isEmpty());
    screen.click(master, 490, 38);  // "Tisknout"
    const QString lists = screen.waitForWindow(u"^Tisk seznamu$"_s);
    ASSERT_FALSE(lists.isEmpty());
    const auto simple = [](const QString& text) {
        return QString(text).replace(u'\u00A0', u' ').simplified();
    };
    const QString cas = u" Čas sluhů Drama Titulky 1"_s;
    const QString chyt = u" Chyť doktora Komedie Neuvedeno 2"_s;
    const QString zert = u" Žert Drama Český dabing 3"_s;
    const QString titles = u"Seznam filmových disků Název Žánr Zvuk / titulky Kat. číslo"_s;
    screen.click(lists, 90, 30);
    EXPECT_EQ(simple(seen()), titles + cas + chyt + zert);
    screen.click(lists, 90, 90);
    EXPECT_EQ(simple(seen()), titles + chyt + cas + zert);
    screen.click(lists, 260, 90);
    EXPECT_EQ(simple(seen()), titles + cas + chyt + zert);
    screen.click(lists, 260, 30);
    EXPECT_EQ(simple(seen()),
              u"Seznam DVD Čas sluhů (1) Žánr: Drama Délka: 111 Stát: ČSSR Rok: 1989 Zvuk: Titulky Herci: "
              "Chyť doktora (2) Žánr: Komedie Délka: 91 Stát: ČR Rok: 2007 Zvuk: Neuvedeno Herci: "
              "Žert (3) Žánr: Drama Délka: 77 Stát: ČSSR Rok: 1968 Zvuk: Český dabing Příběh "
              "Herci: J. Somr 60x93"_s);
    screen.press(lists, {u"Escape"_s});
    ASSERT_TRUE(screen.waitUntilGone(u"^Tisk seznamu$"_s));
    screen.press(master, {u"alt+d"_s, u"k"_s});
    expectEnd(*program, 0);
}

TEST_F(PrintingTest, ACoverIsFoundSavedAndNeedsAPrinter) {
    const Sites sites = Sites::compiledIn();
    QImage image(156, 105, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(folder() + u"/archive.jpg"_s));
    QFile file(folder() + u"/archive.jpg"_s);
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const QByteArray jpg = file.readAll();
    web.serve(sites.cover + u"/covers.php?search=Zelary"_s,
              {.body = "<select name=\"dvd\" align=\"center\" size=25><option "
                       "value=\"5\">Zelary&nbsp(Zelary)</option></select>"});
    web.serve(sites.cover + u"/support.php?DVDcover2=5"_s, {.body = jpg, .type = "image/jpeg"});
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES (1, '1', 'Zelary', 0)");
    auto program = start();
    const QString master = screen.waitForWindow(mainWindow);
    ASSERT_FALSE(master.isEmpty());
    screen.press(master, {u"Menu"_s, u"h"_s});  // "Hledat obal"
    const QString covers = screen.waitForWindow(u"^Dohled.*internetu.$"_s);
    ASSERT_FALSE(covers.isEmpty());
    screen.press(covers, {u"Return"_s, u"Return"_s});  // searches; the first cover then
    screen.click(covers, 100, 405);                    // "Uložit obal jako JPG soubor"
    const QString dialog = screen.waitForWindow(u"^Ulo.*$"_s);
    ASSERT_FALSE(dialog.isEmpty());
    screen.type(dialog, folder() + u"/saved"_s);
    screen.press(dialog, {u"Return"_s});
    ASSERT_TRUE(screen.waitUntilGone(u"^Ulo.*$"_s));
    QFile saved(folder() + u"/saved.jpg"_s);
    ASSERT_TRUE(saved.open(QFile::ReadOnly));
    EXPECT_EQ(saved.readAll(), jpg);
    screen.click(covers, 275, 405);  // "Vytisknout obal"
    const QString box = screen.waitForWindow(u"^Brem DVD Kalv.*ra$"_s);
    ASSERT_FALSE(box.isEmpty());
    screen.press(box, {u"Return"_s});
    expectEnd(*program, 1);
}
