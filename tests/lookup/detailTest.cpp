#include "lookup/mDetail.h"

#include "lookup/mModInetPic.h"
#include "support/TemporaryProgram.h"
#include "support/detailWindow.h"
#include "support/filmPages.h"

using namespace Qt::StringLiterals;
using csfd::Field;

namespace {

const Sites sites{.filmDb = u"http://film.example"_s, .filmDb2 = u"http://imdb.example"_s};
const QString film = u"http://film.example/film/1-DUM/"_s;
const QString downloadFailed = u"Pri detailu došlo k chybě chybe.|0|"_s;

class DetailTest : public TemporaryProgram {
 protected:
    void serve(const filmPages::Film& shown) {
        outside.pages = {{film, filmPages::plainPage(u"87"_s).toUtf8()},
                         {film + u"?text=87"_s, filmPages::fullPage(shown, sites.filmDb2).toUtf8()},
                         {u"http://imdb.example/title/tt0123456"_s,
                          filmPages::imdbPage(u" Lost House (1999) "_s).toUtf8()},
                         {u"http://film.example/posters/1/123.png"_s, "png"}};
    }
    void read() { csfd::nactiDetail(sites, buffers, window); }
    QString field(Field wanted) { return window.fields.value(wanted, u"-"_s); }
    /// All fields in their order, joined by "|".
    QString fields() const { return QStringList(window.fields.values()).join(u'|'); }

    csfd::Buffers buffers;
    RecordingDetailWindow window;
};

}  // namespace

TEST_F(DetailTest, EveryFieldIsReadFromItsPage) {
    serve({});
    read();
    EXPECT_EQ(fields(),
              u"Ztracený dům|Lost House|Drama, Komedie|USA , Kanada|1999|118 min|Jan Novák|"
              "Žofie Černá, René & syn|Příběh domu, který se ztratil.|"_s +
                  at(u"data/webnahl.png"_s));
    EXPECT_EQ(window.poster, field(Field::poster));
    EXPECT_EQ(window.stages, QStringList({u"Hotovo z 30%"_s, u"Hotovo z 60%"_s, u"Hotovo z 65%"_s}));
    EXPECT_EQ(outside.downloads,
              QStringList({film, film + u"?text=87"_s, u"http://imdb.example/title/tt0123456"_s,
                           u"http://film.example/posters/1/123.png"_s}));
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_TRUE(window.posterWanted);
    EXPECT_FALSE(window.waits);
    EXPECT_TRUE(buffers.otherPage.isEmpty());
}

TEST_F(DetailTest, WhatAPageLacksIsEmptiedAndTheOriginAndTitleStay) {
    serve({});
    read();
    serve({{}, {}, {}, {}, {}, {}, {}, {}, {}});
    read();
    EXPECT_EQ(fields(), u"|Lost House||USA , Kanada|1999|118 min||||"_s + at(u"data/webnahl.png"_s));
    EXPECT_FALSE(window.posterWanted);
}

TEST_F(DetailTest, OtherTitlesTakeThePlaceOfTheImdbTitle) {
    serve({.otherTitles = {u"Lost House"_s, u"La maison"_s}});
    window.titles = QStringList{u"old"_s};
    read();
    EXPECT_EQ(window.titles, QStringList({u"Lost House"_s, u"La maison"_s}));
    EXPECT_EQ(field(Field::originalTitle), u"La maison"_s);
}

TEST_F(DetailTest, AFailureEndsTheReadingOnlyBehindAThreePartLine) {
    serve({.origin = u"USA, 1999"_s, .cast = {}});
    read();
    EXPECT_EQ(field(Field::cast), u""_s);
    EXPECT_EQ(field(Field::description), u"Příběh domu, který se ztratil."_s);

    serve({.czechTitle = u"Jiný"_s, .cast = {}, .description = u"nic"_s});
    EXPECT_EQ(failureOf([this] { read(); }), errors::invalidCall);
    EXPECT_TRUE(fields().startsWith(u"Jiný|Lost House|Drama, Komedie|USA , Kanada|1999|118 min|"_s));
    EXPECT_EQ(field(Field::description), u"Příběh domu, který se ztratil."_s);
    EXPECT_FALSE(window.waits);

    // A poster address without an end: kept whole, or the end of the reading.
    for (const bool threeParts : {false, true}) {
        const filmPages::Film shown{.origin = threeParts ? u"USA, 1999, 5 min"_s : u""_s, .poster = {}};
        serve(shown);
        outside.pages[film + u"?text=87"_s] += "posters/1'.\"gif";
        window.posterWanted = true;
        EXPECT_EQ(failureOf([this] { read(); }), threeParts ? errors::invalidCall : 0);
        EXPECT_TRUE(window.posterWanted);
        EXPECT_EQ(outside.downloads.count(u"http://film.example/posters/1.gif"_s), 1);
    }
}

TEST_F(DetailTest, APosterThatIsNoPictureLeavesItsAddressAndAMissingOneNothing) {
    for (const QString& origin : {u"USA, 1999"_s, u"USA, 1999, 5 min"_s}) {
        serve({.origin = origin});
        window.posterIsNoPicture = true;
        read();
        EXPECT_EQ(field(Field::poster), u"http://film.example/posters/1/123.png"_s);
        EXPECT_EQ(window.poster, u""_s);
        outside.pages.remove(u"http://film.example/posters/1/123.png"_s);
        read();
        EXPECT_EQ(field(Field::poster), u""_s);
        EXPECT_TRUE(window.posterWanted);
    }
}

TEST_F(DetailTest, FailedDownloadsAreToldAndTheRestIsReadFromWhatIsThere) {
    serve({});
    outside.pages.remove(film + u"?text=87"_s);
    outside.pages[film] = filmPages::fullPage({}, sites.filmDb2).toUtf8() + "<a href=\"?text=87\" >";
    outside.pages.remove(u"http://imdb.example/title/tt0123456"_s);
    read();
    EXPECT_EQ(outside.told(), downloadFailed + u'\n' + downloadFailed);
    EXPECT_EQ(field(Field::czechTitle), u"Ztracený dům"_s);
    EXPECT_EQ(field(Field::originalTitle), u"-"_s);

    outside.pages.clear();
    window.fields.clear();
    read();
    EXPECT_EQ(outside.told(), downloadFailed);
    EXPECT_TRUE(window.fields.isEmpty());
    EXPECT_FALSE(window.waits);
}

TEST_F(DetailTest, WithoutARowTheFilesOfTheLastReadingAreReadAgain) {
    window.path = QString();
    read();
    EXPECT_TRUE(outside.downloads.isEmpty());
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_EQ(field(Field::czechTitle), u""_s);
    window.path = u"1-DUM/"_s;
    serve({});
    read();
    window.path = QString();
    window.fields.clear();
    read();
    EXPECT_EQ(field(Field::czechTitle), u"Ztracený dům"_s);
    window.path = u"1-DUM/"_s;
    window.row = -1;
    window.fields.clear();
    read();
    EXPECT_EQ(outside.told(), u"Není vybraný film v seznamu nalezených.|64|"_s);
    EXPECT_TRUE(window.fields.isEmpty());
}

TEST_F(DetailTest, TheFilmIsTheOneSelectedAtTheBeginningAndThePageTheOneReadLast) {
    serve({});
    int yields = 0;
    window.onYield = [&] {
        if (++yields == 2) window.path = u"2-JINY/"_s;
        // Between the title and the genre another page takes the place of this one.
        if (field(Field::originalTitle) == u"Lost House" && buffers.page.text().contains(u"Drama"))
            buffers.page = csfd::Page(QString(buffers.page.text()).replace(u"Drama"_s, u"Horor"_s));
    };
    read();
    EXPECT_EQ(outside.downloads.value(1), film + u"?text=87"_s);
    EXPECT_EQ(field(Field::genre), u"Horor, Komedie"_s);
}

TEST_F(DetailTest, APictureHasOneScratchFileForEachSuffix) {
    const std::pair<QString, QString> names[] = {
        {u"http://x/a.jpeg"_s, u"webnahl.peg"_s}, {u"ab"_s, u"webnahl.ab"_s}, {u""_s, u"webnahl."_s}};
    for (const auto& [address, name] : names) {
        outside.pages = {{address, "picture"}, {u"http://shop/"_s + address, "picture"}};
        const QString path = at(u"data/"_s + name);
        QString shown;
        EXPECT_EQ(NactiWebObrazek(address, [&](const QString& file) { shown = file; }), path);
        EXPECT_EQ(shown, path);
        EXPECT_EQ(NactiObrazekObchodu(u"http://shop"_s, address, [](const QString&) {}), path);
    }
    EXPECT_EQ(NactiWebObrazek(u"gone"_s, [](const QString&) { FAIL(); }), u""_s);
}

TEST_F(DetailTest, APageCutOffAnywhereGivesFieldsOrTheOneFailure) {
    serve({.otherTitles = {u"Lost House"_s}});
    const QByteArray whole = outside.pages[film + u"?text=87"_s];
    int failures = 0;
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        outside.pages[film + u"?text=87"_s] = whole.left(length);
        const qint32 failure = failureOf([this] { read(); });
        ASSERT_TRUE(failure == 0 || failure == errors::invalidCall) << length;
        ASSERT_FALSE(window.waits) << length;
        failures += failure == 0 ? 0 : 1;
    }
    EXPECT_GT(failures, 0);
    EXPECT_EQ(field(Field::cast), u"Žofie Černá, René & syn"_s);
}
