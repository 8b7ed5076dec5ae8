#include "lookup/mDetail.h"

#include "support/TemporaryProgram.h"
#include "support/detailWindow.h"
#include "support/filmPages.h"

using Field = LookupField;

namespace {

const Sites sites{.filmDb = u"http://db"_s, .filmDb2 = u"http://imdb"_s};
const QString plainPage = u"http://db/film/1-DUM/"_s;
const QString fullPage = u"http://db/film/1-DUM/?text=87"_s;
const QString imdbPage = u"http://imdb/title/tt0123456"_s;
const QString poster = u"http://db/posters/1/123.png"_s;
const QString downloadFailed = u"Pri detailu došlo k chybě chybe.|0|"_s;

class DetailTest : public TemporaryProgram {
 protected:
    void serve(const filmPages::Film& film = {}) {
        outside.pages = filmPages::site(film, sites.filmDb, sites.filmDb2);
    }
    /// Reads the selected film. @return the number of the failure, or 0.
    qint32 read() {
        window.waits = true;
        const qint32 failure = failureOf([this] { csfd::nactiDetail(sites, buffers, window); });
        EXPECT_FALSE(window.waits);
        return failure;
    }
    QString field(Field wanted) { return window.fields.value(wanted, u"-"_s); }
    QString fields() const { return QStringList(window.fields.values()).join(u'|'); }

    csfd::Buffers buffers;
    RecordingDetailWindow window;
};

}  // namespace

TEST_F(DetailTest, FieldsAreReadFromTheirPagesAndEmptiedByTheNext) {
    serve();
    EXPECT_EQ(read(), 0);
    const QString preview = at(u"data/webnahl.png"_s);
    EXPECT_EQ(fields(),
              u"Ztracený dům|Lost House|Drama, Komedie|USA , Kanada|1999|118 min|Jan Novák|"
              "Žofie Černá, René & syn|Příběh domu, který se ztratil.|"_s +
                  preview);
    EXPECT_EQ(window.poster, preview);
    EXPECT_EQ(window.stages, QStringList({u"Hotovo z 30%"_s, u"Hotovo z 60%"_s, u"Hotovo z 65%"_s}));
    EXPECT_EQ(outside.downloads, QStringList({plainPage, fullPage, imdbPage, poster}));
    EXPECT_TRUE(window.posterWanted);
    EXPECT_TRUE(buffers.otherPage.isEmpty());
    serve({{}, {}, {}, {}, {}, {}, {}, {}, {}});
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(fields(), u"|Lost House||USA , Kanada|1999|118 min||||"_s + preview);
    EXPECT_FALSE(window.posterWanted);
}

TEST_F(DetailTest, FailuresAreSkippedUpToAThreePartOrigin) {
    serve({.origin = u"USA, 1999"_s, .cast = {}});
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(field(Field::cast) + field(Field::description), u"Příběh domu, který se ztratil."_s);
    serve({.czechTitle = u"Jiný"_s, .cast = {}, .description = u"nic"_s});
    EXPECT_EQ(read(), errors::invalidCall);
    EXPECT_TRUE(fields().startsWith(u"Jiný|Lost House|Drama, Komedie|USA , Kanada|1999|118 min|"_s));
    EXPECT_EQ(field(Field::description), u"Příběh domu, který se ztratil."_s);

    for (const auto& [origin, failure] :
         {std::pair(u"USA, 1999"_s, 0), {u", , 5 min"_s, errors::invalidCall}}) {
        serve({.origin = origin, .poster = {}});
        outside.pages[fullPage] += "posters/1'.\"gif";
        window.posterWanted = true;
        EXPECT_EQ(read(), failure);
        EXPECT_TRUE(window.posterWanted);
        EXPECT_EQ(outside.downloads.count(u"http://db/posters/1.gif"_s), 1);
        serve({.origin = origin});
        window.posterIsNoPicture = true;
        EXPECT_EQ(read(), 0);
        EXPECT_EQ(field(Field::picture), poster);
        outside.pages.remove(poster);
        EXPECT_EQ(read(), 0);
        EXPECT_EQ(field(Field::picture), u""_s);
        EXPECT_TRUE(window.posterWanted);
    }
}

TEST_F(DetailTest, AFailedDownloadIsReportedAndTheRestRead) {
    serve();
    outside.pages.remove(fullPage);
    outside.pages.remove(imdbPage);
    outside.pages[plainPage] = filmPages::fullPage({}, sites.filmDb2).toUtf8() + "<a href=\"?text=87\" >";
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(outside.told(), downloadFailed + u'\n' + downloadFailed);
    EXPECT_EQ(field(Field::czechTitle) + field(Field::originalTitle), u"Ztracený dům-"_s);
    outside.pages.clear();
    window.fields.clear();
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(outside.told(), downloadFailed);
    EXPECT_TRUE(window.fields.isEmpty());
}

TEST_F(DetailTest, AnEmptyListReadsTheFormerFilesAndAnUnselectedOneNothing) {
    const QString path = std::exchange(window.path, QString());
    EXPECT_EQ(read(), 0);
    EXPECT_TRUE(outside.downloads.isEmpty());
    serve();
    for (const QString& selected : {path, QString()}) {
        window.path = selected;
        window.fields.clear();
        read();
        EXPECT_EQ(field(Field::czechTitle), u"Ztracený dům"_s);
    }
    window.path = path;
    window.row = -1;
    window.fields.clear();
    read();
    EXPECT_EQ(outside.told(), u"Není vybraný film v seznamu nalezených.|64|"_s);
    EXPECT_TRUE(window.fields.isEmpty());
}

TEST_F(DetailTest, TheSelectionIsReadOnceAndThePageEachTime) {
    serve();
    int yields = 0;
    window.onYield = [&] {
        if (++yields == 2) window.path = u"2-JINY/"_s;
        // Another search replaces the page between the title and the genre.
        if (field(Field::originalTitle) == u"Lost House")
            buffers.page = csfd::Page(QString(buffers.page.text()).replace(u"Drama"_s, u"Horor"_s));
    };
    read();
    EXPECT_EQ(outside.downloads.value(1), fullPage);
    EXPECT_EQ(field(Field::genre), u"Horor, Komedie"_s);
}
