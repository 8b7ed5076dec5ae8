#include "printing/filmLists.h"

#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <csignal>

#include "core/mDatabase.h"
#include "film/mObrazky.h"
#include "platform/codepage.h"
#include "printing/mPrintHTM.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;
using filmLists::Kind;

namespace {

QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

// The whole file without its rows, byte by byte, in Windows-1250.
const QByteArray simpleHead =
    "<html><head>\r\n<meta http-equiv=\"Content-Language\" content=\"cs\">\r\n<meta "
    "http-equiv=\"Content-Type\" content=\"text/html; "
    "charset=windows-1250\">\r\n<title>DVD</title></head><body><p><b><font size=\"6\">Seznam "
    "filmov\xFD"
    "ch disk\xF9</font></b></p>\r\n<table border=\"0\" cellpadding=\"0\" cellspacing=\"0\" style=\"\" "
    "width=\"100%\" id=\"AutoNumber1\">\r\n<tr><td bgcolor=\"#CCCCCC\">&nbsp;<b>N\xE1zev</b></td>\r\n<td "
    "bgcolor=\"#CCCCCC\">&nbsp;<b>\x8E\xE1nr</b></td>\r\n<td bgcolor=\"#CCCCCC\">&nbsp;<b>Zvuk / "
    "titulky</b></td>\r\n<td bgcolor=\"#CCCCCC\">&nbsp;<b>Kat. \xE8\xEDslo</b></td></tr>\r\n";
const QByteArray detailedHead =
    "<html><head>\r\n<meta http-equiv=\"Content-Language\" content=\"cs\">\r\n<meta "
    "http-equiv=\"Content-Type\" content=\"text/html; "
    "charset=windows-1250\">\r\n<title>DVD</title></head><body><p><b><font size=\"6\">Seznam "
    "DVD</font></b></p>\r\n";
const QByteArray end = "</table></body></html>";

QByteArray row(const QByteArray& title, const QByteArray& genre, const QByteArray& sound,
               const QByteArray& number) {
    return "<tr><td>&nbsp;" + title + "</td><td>&nbsp;" + genre + "</td><td>&nbsp;" + sound +
           "</td><td>&nbsp;" + number + "</td></tr>\r\n";
}

QByteArray block(const QByteArray& title, const QByteArray& facts, const QByteArray& text) {
    return "<table border=\"0\" cellpadding=\"0\" cellspacing=\"0\" style=\"border-collapse: collapse\" "
           "bordercolor=\"#111111\" width=\"100%\" id=\"AutoNumber1\">\r\n<tr><td width=\"100%\" "
           "style=\"font-size: 14pt; font-weight: bold\">" +
           title + "</td>\r\n</tr><tr><td width=\"100%\" style=\"font-size: 10px;\">" + facts +
           "</td>\r\n</tr><tr><td width=\"100%\" style=\"border-top:1px solid #000000; border-bottom:1px "
           "solid #000000; font-size: 12pt; border-left-width:1; border-right-width:1\">" +
           text + "</td></tr></table><br>";
}

class FilmListsTest : public TemporaryProgram {
 protected:
    QString listPath() const { return folder() + u"/data/test.htm"_s; }
    QByteArray printed(Kind kind, const QString& sql = u"SELECT * from tDVD ORDER BY CZJM"_s) {
        filmLists::print(sql, kind, [] {});
        return content(listPath());
    }
    /// Stores a picture as the preview of a film.
    qint32 store(qint32 film, const QByteArray& bytes, const QString& name = u"x.JPG"_s) {
        QFile file(folder() + u'/' + name);
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
        file.close();
        return UlozNahled(film, file.fileName());
    }
};

}  // namespace

TEST_F(FilmListsTest, ASimpleListIsWrittenByteForByte) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Jazyk) VALUES"
        "(1, '9', 'Žert & <b>dům</b> \xE2\x98\x83', 'Drama', 0), (2, '10', 'Čas', 'Sci-fi', '1'),"
        "(3, '7', 'Chata', '%%4%%', 2), (4, NULL, 'Bez čísla', 'Drama', 0), (5, '5', NULL, 'Drama', 0),"
        "(6, '6', 'Bez žánru', NULL, 0), (7, '3', 'Auto %%3%%', '', NULL)");
    const QByteArray neither = "Neuvedeno";
    const QByteArray zert =
        row("\x8E"
            "ert & <b>d\xF9m</b> ?",
            "Drama",
            "\xC8"
            "esk\xFD dabing",
            "9");
    const QByteArray cas =
        row("\xC8"
            "as",
            "Sci-fi", "Titulky", "10");
    // A placeholder in a film's own text is one, too.
    const QByteArray chata = row("Chata", "7", neither, "7");
    const QByteArray car = row("Auto Neuvedeno", "", neither, "3");
    EXPECT_EQ(printed(Kind::simple), simpleHead + car + cas + chata + zert + end);
    EXPECT_EQ(outside.opened, QStringList(listPath()));
    EXPECT_EQ(QFile::permissions(listPath()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_EQ(printed(Kind::simple, u"SELECT * from tDVD ORDER BY DVDID DESC"_s),
              simpleHead + car + chata + cas + zert + end);
    EXPECT_EQ(printed(Kind::simple, u"SELECT * from tDVD ORDER BY KatCisl ASC"_s),
              simpleHead + cas + car + chata + zert + end);
    EXPECT_FALSE(Err.pending());
}

TEST_F(FilmListsTest, ADetailedListIsWrittenByteForByte) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Delka, Stat, Rok, Jazyk, Obsah, Herci, Nahled_ID) "
        "VALUES"
        "(1, '9', 'Dům', 'Drama', '118', 'ČR', '1999', 0, 'První\r\nřádek %%8%%%%%PIC%%%', 'A. B.', 1),"
        "(2, '8', 'Les', 'Drama', '0', '', '', 1, '', '', 0), (3, '7', 'Pes', '', '', '', '', 1, '', '', 77),"
        "(4, '4', 'Vlk', '', '', '', '', 1, '', NULL, 0), (5, '5', 'Zub', '', '', '', '', 1, '', '', NULL)");
    ASSERT_EQ(store(1, "picture"), 1);
    const QByteArray tag =
        "<img border=\"0\" src=\"n1.jpg\"  width=\"60\" height=\"93\" style=\"float: left\">";
    const auto facts = [](const QByteArray& genre, const QByteArray& length, const QByteArray& country,
                          const QByteArray& year, const QByteArray& sound) {
        return "<strong>\x8E\xE1nr: </strong>" + genre + "&nbsp;&nbsp;&nbsp;<strong>D\xE9lka: </strong>" +
               length + "&nbsp;&nbsp;&nbsp;<strong>St\xE1t: </strong>" + country +
               "&nbsp;&nbsp;&nbsp;<strong>Rok: </strong> " + year +
               "&nbsp;&nbsp;&nbsp;<strong>Zvuk: </strong>" + sound;
    };
    const auto text = [](const QByteArray& content, const QByteArray& cast) {
        return content +
               "</td></tr><tr><td width=\"100%\" style=\"font-size: 10px;\"><strong>Herci: </strong>" + cast;
    };
    const QByteArray bare = text("&nbsp;&nbsp; ", "");
    EXPECT_EQ(printed(Kind::detailed), detailedHead +
                                           block("D\xF9m  (9)",
                                                 facts("Drama", "118", "\xC8R", "1999",
                                                       "\xC8"
                                                       "esk\xFD dabing"),
                                                 text(tag +
                                                          "&nbsp;&nbsp; Prvn\xED\r\n\xF8\xE1"
                                                          "dek A. B." +
                                                          tag,
                                                      "A. B.")) +
                                           block("Les  (8)", facts("Drama", "0", "", "", "Titulky"), bare) +
                                           block("Pes  (7)", facts("", "", "", "", "Titulky"), bare) +
                                           block("Zub  (5)", facts("", "", "", "", "Titulky"), bare) + end);
    EXPECT_EQ(content(folder() + u"/data/n1.jpg"_s), "picture");
    EXPECT_FALSE(QFile::exists(folder() + u"/data/n77."_s));
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FilmListsTest, TheWordForTheSoundIsThatOfTheList) {
    const struct {
        DbValue value;
        QString word;
    } cases[] = {{qint64{0}, u"Český dabing"_s}, {u"0"_s, u"Český dabing"_s}, {qint64{1}, u"Titulky"_s},
                 {u"1"_s, u"Titulky"_s},         {qint64{2}, u"Neuvedeno"_s}, {{}, u"Neuvedeno"_s},
                 {u""_s, u"Neuvedeno"_s},        {u" 1"_s, u"Neuvedeno"_s},   {qint64{-1}, u"Neuvedeno"_s}};
    for (const auto& [value, word] : cases)
        EXPECT_EQ(GetJazyk(value), word) << testing::PrintToString(value);
}

TEST_F(FilmListsTest, PreviewsComeFromTheProgramFolderAndReplaceOlderOnes) {
    const qint32 id = store(1, QByteArray(250000, 'x'));
    QFile old(folder() + u"/data/n%1.jpg"_s.arg(id));
    ASSERT_TRUE(old.open(QFile::WriteOnly) && old.write(QByteArray(300000, 'o')) == 300000);
    old.close();
    ActDBPath = folder() + u"/elsewhere/data.ddb"_s;
    EXPECT_EQ(PripravNahled(id), u"n%1.jpg"_s.arg(id));
    EXPECT_EQ(content(old.fileName()), QByteArray(250000, 'x'));
    EXPECT_EQ(PripravNahled(77), u""_s);
    // A row without data has a name and no file; one that cannot be replaced has none.
    sql(pictures(),
        "INSERT INTO tPicture (PicID, PicDVDID, PicSkup, PicTyp) VALUES (5, 2, 'N', 'PNG'), (6, 3, "
        "'N', NULL)");
    EXPECT_EQ(PripravNahled(5), u"n5.png"_s);
    EXPECT_FALSE(QFile::exists(folder() + u"/data/n5.png"_s));
    EXPECT_EQ(PripravNahled(6), u"n6."_s);
    sql(pictures(), "UPDATE tPicture SET PicTyp='a/b', PicSize=1, PicDat='x' WHERE PicID=5");
    EXPECT_EQ(PripravNahled(5), u""_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FilmListsTest, AMissingPictureFileIsToldForEveryPreviewAndTheFilmsArePrinted) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Delka, Stat, Rok, Jazyk, Obsah, Herci, Nahled_ID) "
        "VALUES"
        "(1, '1', 'Dům', '', '', '', '', 0, '', '', 1), (2, '2', 'Les', '', '', '', '', 0, '', '', 0),"
        "(3, '3', 'Pes', '', '', '', '', 0, '', '', 2)");
    QFile::remove(pictures());
    const QByteArray list = printed(Kind::detailed);
    EXPECT_EQ(list.count("<table"), 3);
    EXPECT_EQ(list.count("<img"), 0);
    ASSERT_EQ(outside.boxes.size(), 2);
    EXPECT_EQ(outside.boxes[0], (ScriptedOutside::Box{outside.boxes[1].text, 0, u""_s}));
    EXPECT_EQ(outside.boxes[0].text, u"Soubor databáze nelze otevřít."_s);
}

TEST_F(FilmListsTest, WithoutFilmsOrCatalogueThereIsHeadAndEnd) {
    outside.desktopOpens = false;  // no program for such files: nothing is told
    EXPECT_EQ(printed(Kind::simple), simpleHead + end);
    ActDBPath = folder() + u"/elsewhere/data.ddb"_s;
    EXPECT_EQ(printed(Kind::detailed), detailedHead + end);
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_EQ(outside.opened.size(), 2);
}

TEST_F(FilmListsTest, AListMadeWithinAnotherIsInItToo) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Jazyk) VALUES (1, '1', 'A', '', 0), (2, '2', 'B', '', "
        "0),"
        "(3, '3', 'C', '', 0)");
    bool first = true;
    QByteArray inner;
    filmLists::print(u"SELECT * from tDVD ORDER BY CZJM"_s, Kind::simple, [&] {
        if (!std::exchange(first, false)) return;
        inner = printed(Kind::simple, u"SELECT * from tDVD ORDER BY DVDID DESC"_s);
    });
    const auto film = [](const QByteArray& title, const QByteArray& number) {
        return row(title, "",
                   "\xC8"
                   "esk\xFD dabing",
                   number);
    };
    const QByteArray both = simpleHead + film("C", "3") + film("B", "2") + film("A", "1");
    EXPECT_EQ(inner, both + end);
    EXPECT_EQ(content(listPath()), both + film("B", "2") + film("C", "3") + end);
    EXPECT_EQ(outside.opened.size(), 2);
    EXPECT_FALSE(Err.pending());
}

TEST_F(FilmListsTest, AFullDiskLeavesTheFormerListWhole) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Jazyk) VALUES (1, '1', 'A', '', 0)");
    const QByteArray former = printed(Kind::simple);
    sql("WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i+1 FROM n WHERE i<9000) INSERT INTO tDVD "
        "(KatCisl, "
        "CZJm, Zanr, Jazyk) SELECT i, 'Film', 'Drama', 0 FROM n");
    // Writing beyond this size fails as it does on a full disk.
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit small{200000, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const QByteArray after = printed(Kind::simple);
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(after == former) << after.size();
    EXPECT_EQ(QDir(folder() + u"/data"_s).entryList({u"test.htm*"_s}), QStringList(u"test.htm"_s));
    EXPECT_GT(printed(Kind::simple).size(), 200000);
}
