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

/// Markup, written with the other kind of quotes.
QString html(QString text) {
    return text.replace(u'\'', u'"');
}

const QString head = html(
    u"<html><head>\r\n<meta http-equiv='Content-Language' content='cs'>\r\n<meta http-equiv='Content-Type' "
    "content='text/html; charset=windows-1250'>\r\n<title>DVD</title></head><body><p><b><font size='6'>"
    "Seznam %1</font></b></p>\r\n"_s);
const QString simpleHead =
    html(head.arg(u"filmových disků"_s) +
         u"<table border='0' cellpadding='0' cellspacing='0' style='' width='100%' id='AutoNumber1'>\r\n<tr>"
         "<td bgcolor='#CCCCCC'>&nbsp;<b>Název</b></td>\r\n<td bgcolor='#CCCCCC'>&nbsp;<b>Žánr</b></td>\r\n"
         "<td bgcolor='#CCCCCC'>&nbsp;<b>Zvuk / titulky</b></td>\r\n"
         "<td bgcolor='#CCCCCC'>&nbsp;<b>Kat. číslo</b></td></tr>\r\n"_s);
const QString detailedHead = head.arg(u"DVD"_s);
const QString end = u"</table></body></html>"_s;

/// A row of the simple list.
QString row(const QStringList& cells) {
    return u"<tr><td>&nbsp;"_s + cells.join(u"</td><td>&nbsp;"_s) + u"</td></tr>\r\n"_s;
}

/// A film of the detailed list.
QString block(const QString& title, const QString& genre, const QString& length, const QString& country,
              const QString& year, const QString& sound, const QString& text, const QString& cast = {}) {
    return html(
        u"<table border='0' cellpadding='0' cellspacing='0' style='border-collapse: collapse' "
        "bordercolor='#111111' width='100%' id='AutoNumber1'>\r\n<tr><td width='100%' "
        "style='font-size: 14pt; font-weight: bold'>"_s +
        title + u"</td>\r\n</tr><tr><td width='100%' style='font-size: 10px;'><strong>Žánr: </strong>"_s +
        QStringList{genre, u"<strong>Délka: </strong>"_s + length, u"<strong>Stát: </strong>"_s + country,
                    u"<strong>Rok: </strong> "_s + year, u"<strong>Zvuk: </strong>"_s + sound}
            .join(u"&nbsp;&nbsp;&nbsp;"_s) +
        u"</td>\r\n</tr><tr><td width='100%' style='border-top:1px solid #000000; border-bottom:1px solid "
        "#000000; font-size: 12pt; border-left-width:1; border-right-width:1'>"_s +
        text + u"</td></tr><tr><td width='100%' style='font-size: 10px;'><strong>Herci: </strong>"_s + cast +
        u"</td></tr></table><br>"_s);
}

class FilmListsTest : public TemporaryProgram {
 protected:
    QString listPath() const { return at(u"data/test.htm"_s); }
    /// A list as it stands in its file, whose bytes are in Windows-1250.
    QString printed(Kind kind, const QString& sql = u"SELECT * from tDVD ORDER BY CZJM"_s) {
        filmLists::print(sql, kind, [] {});
        return codepage::fromWindows1250(content(listPath()));
    }
    /// Stores a picture as the preview of a film.
    qint32 store(qint32 film, const QByteArray& bytes, const QString& name = u"x.JPG"_s) {
        write(name, bytes);
        return UlozNahled(film, at(name));
    }
};

}  // namespace

TEST_F(FilmListsTest, ASimpleListIsWrittenByteForByte) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Jazyk) VALUES"
        "(1, '9', 'Žert & <b>dům</b> \xE2\x98\x83', 'Drama', 0), (2, '10', 'Čas', 'Sci-fi', '1'),"
        "(3, '7', 'Chata', '%%4%%', 2), (4, NULL, 'Bez čísla', 'Drama', 0), (5, '5', NULL, 'Drama', 0),"
        "(6, '6', 'Bez žánru', NULL, 0), (7, '3', 'Auto %%3%%', '', NULL)");
    const QString zert = row({u"Žert & <b>dům</b> ?"_s, u"Drama"_s, u"Český dabing"_s, u"9"_s});
    const QString cas = row({u"Čas"_s, u"Sci-fi"_s, u"Titulky"_s, u"10"_s});
    // A placeholder in a film's own text is one, too.
    const QString chata = row({u"Chata"_s, u"7"_s, u"Neuvedeno"_s, u"7"_s});
    const QString car = row({u"Auto Neuvedeno"_s, u""_s, u"Neuvedeno"_s, u"3"_s});
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
    const QString tag = u"<img border='0' src='n1.jpg'  width='60' height='93' style='float: left'>"_s;
    const QString blanks = u"&nbsp;&nbsp; "_s;
    EXPECT_EQ(printed(Kind::detailed),
              detailedHead +
                  block(u"Dům  (9)"_s, u"Drama"_s, u"118"_s, u"ČR"_s, u"1999"_s, u"Český dabing"_s,
                        tag + blanks + u"První\r\nřádek A. B."_s + tag, u"A. B."_s) +
                  block(u"Les  (8)"_s, u"Drama"_s, u"0"_s, {}, {}, u"Titulky"_s, blanks) +
                  block(u"Pes  (7)"_s, {}, {}, {}, {}, u"Titulky"_s, blanks) +
                  block(u"Zub  (5)"_s, {}, {}, {}, {}, u"Titulky"_s, blanks) + end);
    EXPECT_EQ(content(u"data/n1.jpg"_s), "picture");
    EXPECT_FALSE(QFile::exists(at(u"data/n77."_s)));
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FilmListsTest, TheWordForTheSoundIsThatOfTheList) {
    const std::pair<DbValue, QString> cases[] = {
        {qint64{0}, u"Český dabing"_s}, {u"0"_s, u"Český dabing"_s}, {qint64{1}, u"Titulky"_s},
        {u"1"_s, u"Titulky"_s},         {qint64{2}, u"Neuvedeno"_s}, {{}, u"Neuvedeno"_s},
        {u""_s, u"Neuvedeno"_s},        {u" 1"_s, u"Neuvedeno"_s},   {qint64{-1}, u"Neuvedeno"_s}};
    for (const auto& [value, word] : cases)
        EXPECT_EQ(GetJazyk(value), word) << testing::PrintToString(value);
}

TEST_F(FilmListsTest, PreviewsComeFromTheProgramFolderAndReplaceOlderOnes) {
    const qint32 id = store(1, QByteArray(250000, 'x'));
    write(u"data/n%1.jpg"_s.arg(id), QByteArray(300000, 'o'));
    ActDBPath = at(u"elsewhere/data.ddb"_s);
    EXPECT_EQ(PripravNahled(id), u"n%1.jpg"_s.arg(id));
    EXPECT_EQ(content(u"data/n%1.jpg"_s.arg(id)), QByteArray(250000, 'x'));
    EXPECT_EQ(PripravNahled(77), u""_s);
    // A row without data has a name and no file; one that cannot be replaced has none.
    sql(pictures(),
        "INSERT INTO tPicture (PicID, PicDVDID, PicSkup, PicTyp) VALUES (5, 2, 'N', 'PNG'), (6, 3, "
        "'N', NULL)");
    EXPECT_EQ(PripravNahled(5), u"n5.png"_s);
    EXPECT_FALSE(QFile::exists(at(u"data/n5.png"_s)));
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
    const QString list = printed(Kind::detailed);
    EXPECT_EQ(list.count(u"<table"_s), 3);
    EXPECT_EQ(list.count(u"<img"_s), 0);
    EXPECT_EQ(outside.told(), u"Soubor databáze nelze otevřít.|0|\nSoubor databáze nelze otevřít.|0|"_s);
}

TEST_F(FilmListsTest, WithoutFilmsOrCatalogueThereIsHeadAndEnd) {
    outside.desktopOpens = false;  // no program for such files: nothing is told
    EXPECT_EQ(printed(Kind::simple), simpleHead + end);
    ActDBPath = at(u"elsewhere/data.ddb"_s);
    EXPECT_EQ(printed(Kind::detailed), detailedHead + end);
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_EQ(outside.opened.size(), 2);
}

TEST_F(FilmListsTest, AListMadeWithinAnotherIsInItToo) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Jazyk) VALUES (1, '1', 'A', '', 0),"
        " (2, '2', 'B', '', 0), (3, '3', 'C', '', 0)");
    bool first = true;
    QString inner;
    filmLists::print(u"SELECT * from tDVD ORDER BY CZJM"_s, Kind::simple, [&] {
        if (!std::exchange(first, false)) return;
        inner = printed(Kind::simple, u"SELECT * from tDVD ORDER BY DVDID DESC"_s);
    });
    const auto film = [](const QString& title, const QString& number) {
        return row({title, {}, u"Český dabing"_s, number});
    };
    const QString both = simpleHead + film(u"C"_s, u"3"_s) + film(u"B"_s, u"2"_s) + film(u"A"_s, u"1"_s);
    EXPECT_EQ(inner, both + end);
    EXPECT_EQ(codepage::fromWindows1250(content(listPath())),
              both + film(u"B"_s, u"2"_s) + film(u"C"_s, u"3"_s) + end);
    EXPECT_EQ(outside.opened.size(), 2);
    EXPECT_FALSE(Err.pending());
}

TEST_F(FilmListsTest, AFullDiskLeavesTheFormerListWhole) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Jazyk) VALUES (1, '1', 'A', '', 0)");
    const QString former = printed(Kind::simple);
    sql("WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i+1 FROM n WHERE i<9000)"
        " INSERT INTO tDVD (KatCisl, CZJm, Zanr, Jazyk) SELECT i, 'Film', 'Drama', 0 FROM n");
    // Writing beyond this size fails as it does on a full disk.
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit small{200000, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const QString after = printed(Kind::simple);
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(after == former) << after.size();
    EXPECT_EQ(QDir(at(u"data"_s)).entryList({u"test.htm*"_s}), QStringList(u"test.htm"_s));
    EXPECT_GT(printed(Kind::simple).size(), 200000);
}
