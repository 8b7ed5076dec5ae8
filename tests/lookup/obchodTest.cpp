#include "lookup/mObchod.h"

#include "support/TemporaryProgram.h"
#include "support/conversions.h"
#include "support/detailWindow.h"

namespace {

class ShopFilmTest : public TemporaryProgram {
 protected:
    /// All fields of a page, joined by "|". Brackets stand for the tags of a cell.
    QString cut(QString page) {
        page.replace(u"["_s, u"</TD><TD width=80>"_s).replace(u"]"_s, u"</TD>"_s);
        window.waits = true;
        obchod::NactiDetailObchod(page, u"http://shop"_s, window);
        EXPECT_FALSE(window.waits);
        return QStringList(window.fields.values()).join(u'|');
    }

    RecordingShopWindow window;
};

}  // namespace

TEST(ShopList, EveryLinkGivesATitleAndANumber) {
    // "[7&|A]" stands for a link: address and title. Failures give their number.
    const auto films = [](QString page) {
        page.replace(u"["_s, u"<A class=zbozi title=\"x\" href=\"z.php?id_zbozi="_s);
        page.replace(u"|"_s, u"\">"_s).replace(u"]"_s, u"</A>"_s);
        QStringList found;
        const qint32 failure = failureOf([&] {
            for (const auto& [title, id] : obchod::NactiSeznamObchod(page))
                found += title + u' ' + QString::number(id);
        });
        return failure == 0 ? found.join(u", "_s) : QString::number(failure);
    };
    expectEach(films,
               {u"x[7&a=1| <FONT style=\"COLOR: green\">Dům</FONT> a]y[2147483647&|B]→"
                " Dům a 7, B 2147483647",
                u"<a class=zbozi title=\"x\" href=\"id_zbozi=7&\">Dům</a>→", u"→",
                u"[7&|<B>Dům</B>]→BDům/B 7", u"[7&|A</a>B]→A 7", u"[7|bez konce]→5", u"[x&|bez čísla]→13",
                u"[2147483648&|velké]→6", u"<A class=zbozi title=x href=z.php>A</A>→5", u"[7&|A→5"});
}

TEST_F(ShopFilmTest, EveryFieldIsTheFirstCellBehindItsLabel) {
    outside.pages = {{u"http://shop/images/1.jpeg"_s, "picture"}};
    const QString page =
        u"Rok výroby:[1999&nbsp;]<H2 class=title1> Název <A href=x>y</A></H2>Žánr:[Drama]"
        "Originální název:[&nbsp;]Režie:[ Jan &amp; syn ]Herci:[<B>tučně</B>]Délka (min.):[120&nbsp;]"
        "Země původu:[USA&nbsp;/ SR]Popis:[<TABLE></table>Děj<BR>dál &nbsp;]"
        "<A HREF='javascript:open_wnd_photo(\"1\")'><IMG alt=x SRC=\"/images/1.jpeg\"></A>"_s;
    EXPECT_EQ(cut(page),
              u"Název|&nbsp;|Drama|USA/ SR|1999|120|Jan &amp; syn||Dějdál|"_s + at(u"data/webnahl.peg"_s));
    EXPECT_EQ(window.picture, at(u"data/webnahl.peg"_s));
    window.noPicture = true;
    EXPECT_TRUE(cut(page).endsWith(u"|images/1.jpeg"_s));
    outside.pages.clear();
    EXPECT_TRUE(cut(page).endsWith(u"Dějdál|"_s));
}

TEST_F(ShopFilmTest, AMissingFieldTakesWhatTheLastCutLeft) {
    expectEach([this](const QString& page) { return cut(page); },
               {u"→|||||||||", u"<H2 class=title1>Název</H2> zbytek→Název</H2> zbytek|||||||||",
                u"<H2 class=title1>Ná<zev<A>→Ná<zev||Ná|||||||",
                u"<H2 class=title1>Název<A>Režie:[Jan]→Název||||||Jan|||",
                // Without an inner table the letters of the cell's tag stay.
                u"Popis:[Děj]→||||||||TD width=80Děj|", u"popis:[Děj]→|||||||||"});
    cut(u"<a href='javascript:open_wnd_photo'><IMG SRC=images/x.jpg border=0>"_s);
    EXPECT_EQ(outside.downloads.first(), u"http://shop/"_s);
    EXPECT_EQ(outside.downloads.last(), u"http://shop/images/x.jpg border=0"_s);
}
