#include "lookup/mCSFD.h"

#include "support/conversions.h"
#include "support/filmPages.h"

using namespace Qt::StringLiterals;
using csfd::Page;

namespace {

/// The films of a page, "title|path" each.
QString listed(QString page) {
    QStringList films;
    for (const auto& [title, path] : csfd::NactiSeznamFilmu(page))
        films += title + u'|' + path;
    return films.join(u", "_s);
}

QString otherTitles(const QString& block) {
    const csfd::OtherTitles found = csfd::ZpracujDalsiNazvy(block);
    QStringList titles(found.titles.begin(), found.titles.end());
    return found.any ? u"["_s + titles.join(u'|') + u']' : u"none"_s;
}

}  // namespace

TEST(FilmDatabase, AFieldStandsBetweenItsMarkersWhateverTheirCase) {
    const auto field = [](const QString& page, const QString& start, const QString& end) {
        return NajdiTextPolozky(Page(page), start, end);
    };
    const auto bold = [&](const QString& page) { return field(page, u"<b>"_s, u"</b>"_s); };
    expectEach(bold,
               {u"x<B> a\r\n b  </b>y</B>→a b  ", u"</b><b>\r\n  a</b>→a", u"a</b>→", u"<b>a→", u"<b></b>→"});
    EXPECT_EQ(field(u"REŽIE: ßa<"_s, u"Režie:"_s, u"<"_s), u"ßa"_s);
    EXPECT_EQ(NajdiURLPolozky(Page(u"<A HREF=\"http://x/title/tt1/a/b"_s), u"<a href=\"http://x/title/"_s),
              u"tt1"_s);
    EXPECT_EQ(NajdiURLPolozky(Page(u"/title/tt1"_s), u"/title/"_s), u""_s);
    EXPECT_EQ(NajdiURLPolozky(Page(u""_s), u"/title/"_s), u""_s);
}

TEST(FilmDatabase, TheListIsReadFromTheFirstCellBehindItsHeading) {
    // Two films stand for "@1" and "@2".
    const auto films = [](QString page) {
        return listed(page.replace(u"@1"_s, u"<a href=\"/film/1-A/\">Ztracený dům</a>"_s)
                          .replace(u"@2"_s, u"<A HREF=\"/film/2-B/\">Druhý</A> (1999)"_s));
    };
    expectEach(films, {u"v českých názvech <td>@1<br>@2</td>→ZTRACENÝ DŮM|1-A/, DRUHÝ (1999)<|2-B/",
                       u"@1v originálních názvech@2</td>→DRUHÝ (1999)<|2-B/",
                       u"v originálních názvech@1</td> v českých názvech@2<br></td>→DRUHÝ (1999)|2-B/",
                       u"V ČESKÝCH NÁZVECH@1</td>→", u"v českých názvech nic→",
                       u"v českých názvech bez konce buňky@1→",
                       u"v českých názvech@1<BR>text<br><a href='/film/3'>x</a><br></td>→ZTRACENÝ DŮM|1-A/",
                       u"v českých názvech<a href=\"/film/1-A>A</a><br></td>→A|",
                       u"v českých názvech<a href=\"/film/1-A\"<br></td>→1-A\"|1-A"});
    EXPECT_EQ(films(filmPages::searchPage({{u"1-A/"_s, u"Á"_s}, {u"2-B/"_s, u"Ž"_s}})),
              u"Á (1999)|1-A/, Ž (1999)|2-B/"_s);
    QString page = u"x v českých názvech <a href=\"/film/1\">a</a></td>z"_s;
    csfd::NactiSeznamFilmu(page);
    EXPECT_EQ(page, u"<a href=\"/film/1\">a</a><"_s);
}

TEST(FilmDatabase, OtherTitlesNeedATableAtLeast21CharactersIn) {
    const QString table = u"<TABLE cellpadding='0' cellspacing='0' border='0'>"_s;
    const QString row = u"<tr><td vspace='2' ></td><td>%1</td></tr>"_s;
    const QString ahead(21, u'x');
    EXPECT_EQ(otherTitles(ahead + table + row.arg(u"Lost"_s) + row.arg(u"Perdu"_s)), u"[Lost|Perdu]"_s);
    EXPECT_EQ(otherTitles(ahead.mid(1) + table + row.arg(u"Lost"_s)), u"none"_s);
    EXPECT_EQ(otherTitles(ahead + table + u"<td>Lost</td>"_s), u"none"_s);
    EXPECT_EQ(otherTitles(ahead + table + u"</td></tr>"_s), u"[]"_s);
    EXPECT_EQ(otherTitles(ahead + table + row.arg(u"a"_s) + u"vspace='2' ></td><td>b"_s), u"[a]"_s);
    EXPECT_EQ(otherTitles(row.arg(u"early"_s) + ahead + table + row.arg(u""_s)), u"[]"_s);
    EXPECT_EQ(otherTitles(u""_s), u"none"_s);
}

TEST(FilmDatabase, KeyTitleOriginCastAndDescriptionAreCutByTheirOwnRules) {
    EXPECT_EQ(csfd::detailKey(Page(u"<A Href=\"?text=9\" x><a href=\"?text=8\" "_s)), u"9"_s);
    EXPECT_EQ(csfd::detailKey(Page(u"href=\"?text=9\">rest"_s)), u"9>rest"_s);
    EXPECT_EQ(csfd::detailKey(Page(u"text=9 "_s)), u""_s);

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
