#include "printing/filmLists.h"

#include <QFile>

#include "core/mDatabase.h"
#include "film/mObrazky.h"
#include "platform/codepage.h"
#include "printing/mPrintHTM.h"
#include "support/TemporaryProgram.h"
#include "support/conversions.h"

using filmLists::Kind;

namespace {

/// Markup written with single quotes, "~" for "&nbsp;" and "|" for a line break.
QString html(QString text) {
    return text.replace(u'\'', u'"').replace(u"~"_s, u"&nbsp;"_s).replace(u"|"_s, u"\r\n"_s);
}

const QString head =
    u"<html><head>|<meta http-equiv='Content-Language' content='cs'>|<meta http-equiv='Content-Type' "
    "content='text/html; charset=windows-1250'>|<title>DVD</title></head><body><p><b><font size='6'>Seznam "_s;
const QString simpleHead =
    html(head +
         u"filmových disků</font></b></p>|<table border='0' cellpadding='0' cellspacing='0' style='' "
         "width='100%' id='AutoNumber1'>|<tr><td bgcolor='#CCCCCC'>~<b>Název</b></td>|<td "
         "bgcolor='#CCCCCC'>~<b>Žánr</b></td>|<td bgcolor='#CCCCCC'>~<b>Zvuk / titulky</b></td>|<td "
         "bgcolor='#CCCCCC'>~<b>Kat. číslo</b></td></tr>|"_s);
const QString detailedHead = html(head + u"DVD</font></b></p>|"_s);
const QString end = u"</table></body></html>"_s;

/// A film of the detailed list: title, genre, length, country, year, sound, text and cast.
QString block(const QStringList& film) {
    QString filled = html(
        u"<table border='0' cellpadding='0' cellspacing='0' style='border-collapse: collapse' "
        "bordercolor='#111111' width='100%' id='AutoNumber1'>|<tr><td width='100%' style='font-size: 14pt; "
        "font-weight: bold'>@</td>|</tr><tr><td width='100%' style='font-size: 10px;'><strong>Žánr: "
        "</strong>@~~~<strong>Délka: </strong>@~~~<strong>Stát: </strong>@~~~<strong>Rok: </strong> "
        "@~~~<strong>Zvuk: </strong>@</td>|</tr><tr><td width='100%' style='border-top:1px solid #000000; "
        "border-bottom:1px solid #000000; font-size: 12pt; border-left-width:1; border-right-width:1'>@</td>"
        "</tr><tr><td width='100%' style='font-size: 10px;'><strong>Herci: </strong>@</td></tr></table><br>"_s);
    for (const QString& part : film)
        filled.replace(filled.indexOf(u'@'), 1, html(part));
    return filled;
}

class FilmListsTest : public TemporaryProgram {
 protected:
    /// A list as it stands in its file, whose bytes are in Windows-1250.
    QString printed(Kind kind) const {
        filmLists::print(u"SELECT * from tDVD ORDER BY CZJM"_s, kind, [] {});
        return codepage::fromWindows1250(content(u"data/test.htm"_s));
    }
    /// Stores a picture as the preview of film 1.
    qint32 store(const QByteArray& bytes) const {
        write(u"x.JPG"_s, bytes);
        return UlozNahled(1, at(u"x.JPG"_s));
    }
};

}  // namespace

TEST_F(FilmListsTest, ASimpleListIsWrittenByteForByteInPlaceOfTheFormerOne) {
    outside.desktopOpens = false;
    EXPECT_EQ(printed(Kind::simple), simpleHead + end);
    QFile former(at(u"data/test.htm"_s));
    ASSERT_TRUE(former.open(QFile::ReadOnly));
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Jazyk) VALUES"
        "(1, '9', 'Žert & <b>dům</b> \xE2\x98\x83', 'Drama', 0), (2, '10', 'Čas', 'Sci-fi', '1'),"
        "(3, '7', 'Chata', '%%4%%', 2), (4, NULL, 'Bez čísla', 'Drama', 0), (5, '5', NULL, 'Drama', 0),"
        "(6, '6', 'Bez žánru', NULL, 0), (7, '3', 'Auto %%3%%', '', NULL)");
    const auto row = [](const QString& cells) {
        return html(u"<tr><td>~"_s + QString(cells).replace(u"/"_s, u"</td><td>~"_s) + u"</td></tr>|"_s);
    };
    // A placeholder in a film's own text is replaced, too.
    EXPECT_EQ(printed(Kind::simple),
              simpleHead + row(u"Auto Neuvedeno//Neuvedeno/3"_s) + row(u"Čas/Sci-fi/Titulky/10"_s) +
                  row(u"Chata/7/Neuvedeno/7"_s) +
                  row(u"Žert & <b>dům#b> ?/Drama/Český dabing/9"_s).replace(u"#"_s, u"</"_s) + end);
    EXPECT_EQ(former.size(), codepage::toWindows1250(simpleHead + end).size());  // not written over
    EXPECT_EQ(outside.opened, QStringList(2, at(u"data/test.htm"_s)));
    EXPECT_FALSE(Err.pending());
    expectEach(&GetJazyk, {u"0→Český dabing", u"1→Titulky", u"2→Neuvedeno", u"→Neuvedeno", u" 1→Neuvedeno"});
}

TEST_F(FilmListsTest, ADetailedListIsWrittenByteForByte) {
    sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Zanr, Delka, Stat, Rok, Jazyk, Obsah, Herci, Nahled_ID) "
        "VALUES"
        "(1, '9', 'Dům', 'Drama', '118', 'ČR', '1999', 0, 'První\r\nřádek %%8%%%%%PIC%%%', 'A. B.', 1),"
        "(2, '8', 'Les', 'Drama', '0', '', '', 1, '', '', 0), (3, '7', 'Pes', '', '', '', '', 1, '', '', 77),"
        "(4, '4', 'Vlk', '', '', '', '', 1, '', NULL, 0), (5, '5', 'Zub', '', '', '', '', 1, '', '', NULL)");
    ASSERT_EQ(store("picture"), 1);
    const QString tag = u"<img border='0' src='n1.jpg'  width='60' height='93' style='float: left'>"_s;
    const auto plain = [](const QString& title, const QString& genre, const QString& length) {
        return block({title, genre, length, u""_s, u""_s, u"Titulky"_s, u"~~ "_s, u""_s});
    };
    EXPECT_EQ(printed(Kind::detailed),
              detailedHead +
                  block({u"Dům  (9)"_s, u"Drama"_s, u"118"_s, u"ČR"_s, u"1999"_s, u"Český dabing"_s,
                         tag + u"~~ První|řádek A. B."_s + tag, u"A. B."_s}) +
                  plain(u"Les  (8)"_s, u"Drama"_s, u"0"_s) + plain(u"Pes  (7)"_s, u""_s, u""_s) +
                  plain(u"Zub  (5)"_s, u""_s, u""_s) + end);
    EXPECT_EQ(content(u"data/n1.jpg"_s), "picture");
    EXPECT_FALSE(QFile::exists(at(u"data/n77."_s)));

    QFile::remove(pictures());
    EXPECT_EQ(printed(Kind::detailed).count(u"<img"_s), 0);
    const QString told = u"Soubor databáze nelze otevřít.\n\n"_s + pictures() + u"|0|"_s;
    EXPECT_EQ(outside.told(), told + u'\n' + told);
    ActDBPath = at(u"elsewhere/data.ddb"_s);
    EXPECT_EQ(printed(Kind::detailed), detailedHead + end);
}

TEST_F(FilmListsTest, PreviewsGoToTheProgramFolderAndReplaceOlderOnes) {
    const QByteArray picture(250000, 'x');
    ASSERT_EQ(store(picture), 1);
    write(u"data/n1.jpg"_s, QByteArray(300000, 'o'));
    // A row without data has a name but no file; one that cannot be written has neither.
    sql(pictures(),
        "INSERT INTO tPicture (PicID, PicDVDID, PicSkup, PicTyp, PicSize, PicDat) VALUES"
        " (5, 2, 'N', 'PNG', NULL, NULL), (6, 3, 'N', NULL, NULL, NULL), (7, 3, 'N', 'a/b', 1, 'x')");
    ActDBPath = at(u"elsewhere/data.ddb"_s);
    for (const auto& [id, name] : {std::pair(1, u"n1.jpg"_s), std::pair(77, u""_s), std::pair(5, u"n5.png"_s),
                                   std::pair(6, u"n6."_s), std::pair(7, u""_s)})
        EXPECT_EQ(PripravNahled(id), name);
    EXPECT_EQ(content(u"data/n1.jpg"_s), picture);
    EXPECT_FALSE(QFile::exists(at(u"data/n5.png"_s)));
}
