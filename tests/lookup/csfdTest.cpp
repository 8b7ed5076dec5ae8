#include "lookup/mCSFD.h"

#include <QStringList>

#include "support/conversions.h"

using namespace Qt::StringLiterals;
using csfd::Page;

TEST(FilmDatabase, FieldsAreCutBetweenMarkersOfAnyCase) {
    const auto bold = [](const QString& page) { return NajdiTextPolozky(Page(page), u"<b>"_s, u"</b>"_s); };
    expectEach(bold,
               {u"x<B> a\r\n b  </b>y</B>→a b  ", u"</b><b>\r\n  a</b>→a", u"a</b>→", u"<b>a→", u"<b></b>→"});
    EXPECT_EQ(NajdiTextPolozky(Page(u"REŽIE: ßa<"_s), u"Režie:"_s, u"<"_s), u"ßa"_s);
    const auto link = [](const QString& page) { return NajdiURLPolozky(Page(page), u"<a href=\"/title/"_s); };
    expectEach(link, {u"x<A HREF=\"/title/tt1/a/b→tt1", u"<a href=\"/title/tt1→", u"→"});
    const auto key = [](const QString& page) { return csfd::detailKey(Page(page)); };
    expectEach(
        key, {u"<A Href=\"?text=9\" x><a href=\"?text=8\" →9", u"href=\"?text=9\">rest→9>rest", u"text=9 →"});
}

TEST(FilmDatabase, TheListIsTheFirstCellBehindItsHeading) {
    // "@1" and "@2" stand for two films.
    const auto films = [](QString page) {
        page.replace(u"@1"_s, u"<a href=\"/film/1-A/\">Ztracený dům</a>"_s);
        page.replace(u"@2"_s, u"<A HREF=\"/film/2-B/\">Druhý</A> (1999)"_s);
        QStringList found;
        for (const auto& [title, path] : csfd::NactiSeznamFilmu(page))
            found += title + u'|' + path;
        return found.join(u", "_s);
    };
    expectEach(films, {u"v českých názvech <td>@1<br>@2</td>→ZTRACENÝ DŮM|1-A/, DRUHÝ (1999)<|2-B/",
                       u"@1v originálních názvech@2</td>→DRUHÝ (1999)<|2-B/",
                       u"v originálních názvech@1</td> v českých názvech@2<br></td>→DRUHÝ (1999)|2-B/",
                       u"V ČESKÝCH NÁZVECH@1</td>→", u"v českých názvech nic→",
                       u"v českých názvech bez konce buňky@1→",
                       u"v českých názvech@1<BR>text<br><a href='/film/3'>x</a><br></td>→ZTRACENÝ DŮM|1-A/",
                       u"v českých názvech<a href=\"/film/1-A>A</a><br></td>→A|",
                       u"v českých názvech<a href=\"/film/1-A\"<br></td>→1-A\"|1-A"});
    QString page = u"x v českých názvech <a href=\"/film/1\">a</a></td>z"_s;
    csfd::NactiSeznamFilmu(page);
    EXPECT_EQ(page, u"<a href=\"/film/1\">a</a><"_s);
}

TEST(FilmDatabase, OtherTitlesNeedATableAtLeast21CharactersIn) {
    // "#" stands for 21 characters, "T" for the start of the table, "(" and ")" for those of its rows.
    const auto otherTitles = [](QString block) {
        block.replace(u"#"_s, QString(21, u'x'));
        block.replace(u"T"_s, u"<TABLE cellpadding='0' cellspacing='0' border='0'>"_s);
        block.replace(u"("_s, u"<tr><td vspace='2' ></td><td>"_s).replace(u")"_s, u"</td></tr>"_s);
        const csfd::OtherTitles found = csfd::ZpracujDalsiNazvy(block);
        const QStringList titles(found.titles.begin(), found.titles.end());
        return found.any ? u"["_s + titles.join(u'|') + u']' : u"none"_s;
    };
    expectEach(otherTitles,
               {u"#T(Lost)(Perdu)→[Lost|Perdu]", u"xxxxxxxxxxxxxxxxxxxxT(Lost)→none", u"#T<td>Lost</td>→none",
                u"#T)→[]", u"#T(a)(b→[a]", u"(early)#T()→[]", u"→none"});
}

TEST(FilmDatabase, EachTextHasItsOwnRules) {
    expectEach(&csfd::titleWithoutYear,
               {u"Lost House (1999)→Lost House", u" (1899) A (2101) →(1899) A (2101)",
                u"A (1999/I) (1900)(2100)→A (1999/I)", u"(20(1999)00)→", u"(19(2000)99)→(1999)"});
    const auto origin = [](const QString& line) {
        csfd::Origin found;
        const bool whole = csfd::cutOrigin(line, found);
        return whole ? QStringList({found.country, found.year, found.length}).join(u'|') : u"no"_s;
    };
    expectEach(origin, {u"USA / Kanada, 1999, 118 min→USA , Kanada|1999|118 min",
                        u"USA,1999,118 min (DVD)→USA|1999|118 min", u"USA, 1999, 118→USA|1999|11", u", , →||",
                        u"USA, 1999, 118 min, x→no", u"USA, 1999→no", u"→no"});
    expectEach(&csfd::castOf, {u"<a href=1>A &amp; B</a>, <a>C</a>→A & B, C, ",
                               u"bez odkazu</a>x→bez odkazu, ", u"<A>A</A>→"});
    expectEach(&csfd::descriptionOf,
               {u"a<br>b<BR>c &egrave; d→a b\r\nc č d", u"reklama</noscript>x</div></div><b>Děj</b>→Děj",
                u"reklama</noscript>Děj→Děj", u"a</div></div>b→a\r\n\r\n\r\n\r\nb"});
}
