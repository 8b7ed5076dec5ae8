#include "lookup/mObchod.h"

#include <QMap>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;
using obchod::Field;

namespace {

QString link(const QString& id, const QString& title) {
    return u"<A class=zbozi title=\"x\" href=\"z.php?id_zbozi=%1\">%2</A>"_s.arg(id, title);
}

/// The films of a page, "title|number" each.
QString listed(const QString& page) {
    QStringList films;
    for (const auto& [title, id] : obchod::NactiSeznamObchod(page))
        films += title + u'|' + QString::number(id);
    return films.join(u", "_s);
}

class Window final : public obchod::DetailWindow {
 public:
    QString text(Field field) const override { return fields.value(field, u"-"_s); }
    void setText(Field field, const QString& text) override { fields[field] = text; }
    void showPicture(const QString& path) override {
        if (noPicture) throw RuntimeError(errors::invalidPicture);
        picture = path;
    }
    void repaintPicture() override {}
    void stopBrowser() override { stopped = true; }
    void showWait() override { waits = true; }
    void hideWait() override { waits = false; }
    void yield() override {}

    QMap<Field, QString> fields;
    QString picture;
    bool noPicture = false;
    bool stopped = false;
    bool waits = true;
};

class ShopDetailTest : public TemporaryProgram {
 protected:
    /// The ten fields of a page in their order, joined by "|".
    QString cut(const QString& page) {
        window.fields.clear();
        window.waits = true;
        obchod::NactiDetailObchod(page, u"http://shop"_s, window);
        EXPECT_FALSE(window.waits);
        EXPECT_TRUE(window.stopped);
        return QStringList(window.fields.values()).join(u'|');
    }
    static QString row(const QString& label, const QString& value) {
        return label + u"</TD><TD width=80>"_s + value + u"</TD>"_s;
    }

    Window window;
};

}  // namespace

TEST(ShopList, EveryLinkGivesATitleAndANumber) {
    EXPECT_EQ(listed(u"x"_s + link(u"7&a=1"_s, u" <FONT style=\"COLOR: green\">Dům</FONT> a"_s) + u"y"_s +
                     link(u"2147483647&"_s, u"B"_s)),
              u" Dům a|7, B|2147483647"_s);
    EXPECT_EQ(listed(link(u"7&"_s, u"<B>Dům</B>"_s).toLower()), u""_s);
    EXPECT_EQ(listed(link(u"7&"_s, u"<B>Dům</B>"_s)), u"BDům/B|7"_s);
    EXPECT_EQ(listed(link(u"7&"_s, u"A</a>B"_s)), u"A|7"_s);
    EXPECT_EQ(listed(u""_s), u""_s);
    const std::pair<QString, qint32> failures[] = {
        {link(u"7"_s, u"bez konce"_s), errors::invalidCall},
        {link(u"x&"_s, u"bez čísla"_s), errors::typeMismatch},
        {link(u"2147483648&"_s, u"velké"_s), errors::overflow},
        {u"<A class=zbozi title=x href=z.php>A</A>"_s, errors::invalidCall},
        {u"<A class=zbozi title=x href=\"id_zbozi=7&\">A"_s, errors::invalidCall}};
    for (const auto& [page, failure] : failures)
        EXPECT_EQ(failureOf([&page = page] { obchod::NactiSeznamObchod(page); }), failure)
            << page.toStdString();
}

TEST_F(ShopDetailTest, EveryFieldIsTheFirstCellBehindItsLabel) {
    outside.pages = {{u"http://shop/images/1.jpg"_s, "picture"}};
    const QString page =
        row(u"Rok výroby:"_s, u"1999&nbsp;"_s) + u"<H2 class=title1> Název <A href=x>y</A></H2>"_s +
        row(u"Žánr:"_s, u"Drama"_s) + row(u"Originální název:"_s, u"&nbsp;"_s) +
        row(u"Režie:"_s, u" Jan &amp; syn "_s) + row(u"Herci:"_s, u"<B>tučně</B>"_s) +
        row(u"Délka (min.):"_s, u"120&nbsp;"_s) + row(u"Země původu:"_s, u"USA&nbsp;/ SR"_s) +
        row(u"Popis:"_s, u"<TABLE></table>Děj<BR>dál &nbsp;</TD>"_s) +
        u"<A HREF='javascript:open_wnd_photo(\"1\")'><IMG alt=x SRC=\"/images/1.jpg\"></A>"_s;
    EXPECT_EQ(cut(page),
              u"Název|Drama|&nbsp;|Jan &amp; syn||120|USA/ SR|1999|Dějdál|"_s + at(u"data/webnahl.jpg"_s));
    EXPECT_EQ(window.picture, at(u"data/webnahl.jpg"_s));
    window.noPicture = true;
    EXPECT_TRUE(cut(page).endsWith(u"|images/1.jpg"_s));
    outside.pages.clear();
    EXPECT_TRUE(cut(page).endsWith(u"Dějdál|"_s));
}

TEST_F(ShopDetailTest, WhatAPageLacksTakesWhatTheLastCutLeft) {
    EXPECT_EQ(cut(u""_s), u"|||||||||"_s);
    EXPECT_EQ(outside.downloads, QStringList(u"http://shop/"_s));
    // Without a link behind the heading the title is all the rest, and a row that is missing next the title
    // up to a tag.
    EXPECT_EQ(cut(u"<H2 class=title1>Název</H2> zbytek"_s), u"Název</H2> zbytek|||||||||"_s);
    EXPECT_EQ(cut(u"<H2 class=title1>Ná<zev<A>"_s), u"Ná<zev|Ná||||||||"_s);
    EXPECT_EQ(cut(u"<H2 class=title1>Název<A>"_s + row(u"Režie:"_s, u"Jan"_s)), u"Název|||Jan||||||"_s);
    // A description without an inner table keeps the letters of its cell's tag.
    EXPECT_TRUE(cut(u"Popis:</TD><TD>Děj</TD>"_s).endsWith(u"|TDDěj|"_s));
    EXPECT_TRUE(cut(u"popis:</TD><TD>Děj</TD>"_s).endsWith(u"||"_s));
    cut(u"<a href='javascript:open_wnd_photo'><IMG SRC=images/x.jpg border=0>"_s);
    EXPECT_EQ(outside.downloads.last(), u"http://shop/images/x.jpg border=0"_s);
}

TEST_F(ShopDetailTest, APageCutOffAnywhereGivesFields) {
    const QString page = u"<H2 class=title1>A<A>"_s + row(u"Žánr:"_s, u"Drama"_s) +
                         row(u"Popis:"_s, u"<TABLE></TABLE>Děj</TD>"_s) +
                         u"<a href='javascript:open_wnd_photo'><IMG SRC=images/x.jpg>"_s;
    for (qsizetype length = 0; length <= page.size(); ++length)
        EXPECT_EQ(cut(page.left(length)).count(u'|'), 9) << length;
}
