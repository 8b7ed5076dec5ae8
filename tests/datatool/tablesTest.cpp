// Tables as people and other programs write them.

#include "datatool/FilmLoader.h"
#include "datatool/importFixture.h"
#include "film/mObrazky.h"
#include "platform/FolderLock.h"
#include "platform/restrictions.h"

using namespace Qt::StringLiterals;

namespace {

class Tables : public OldPair {
 protected:
    Tables() { sql("INSERT INTO tDVD (KatCisl,CZJm,Rok) VALUES ('7','Kolja','1996')"); }

    LoadReport load(const QByteArray& csv, const filmLoader::Options& options = {}) const {
        write(u"films.csv"_s, csv);
        return filmLoader::load(at(u"data"_s), at(u"films.csv"_s), options,
                                [](const QString&, qint64, qint64) {});
    }
    /// What begins as a picture in JPEG and goes on at random.
    static QByteArray jpeg(qsizetype length) { return "\xFF\xD8" + noise(length - 2); }
    QString titles() const {
        return text("SELECT group_concat(CZJm) FROM (SELECT CZJm FROM tDVD ORDER BY DVDID)");
    }
    /// The picture that a film's column names: group, type, size and bytes.
    QString picture(const QString& folder, const char* column, int film) const {
        const qint64 id =
            text(at(folder + u"/data.ddb"_s),
                 QByteArray("SELECT ") + column + " FROM tDVD WHERE DVDID=" + QByteArray::number(film))
                .toLongLong();
        return text(
            at(folder + u"/pictures.ddb"_s),
            "SELECT PicDVDID||PicSkup||PicTyp||PicSize||hex(substr(PicDat,1,PicSize))||length(PicDat) "
            "FROM tPicture WHERE PicID=" +
                QByteArray::number(id));
    }
};

}  // namespace

TEST_F(Tables, HeadingsAndValuesOfPeopleAndOtherProgramsAreUnderstood) {
    // A table of one film, columns, and what they hold.
    const std::tuple<QByteArray, QByteArray, QString> cases[] = {
        {"NÁZEV; Původní název ;Rok;Režisér;Hrají;Žánr;Země;Délka;Popis;Poznámka;Počet disků;Ev. "
         "číslo;Oddělení;"
         "Jazyk\nA;B;1999;C;D, E: F;Drama / Komedie;Česko;116 min.;\"a; b|c\";x;2;K 5;Sklep;České titulky\n",
         "CZJm||PuvJm||Rok||Rezie||Herci||Zanr||Stat||Delka||Obsah||Poznamka||DiskPocet||KatCisl||"
         "(SELECT OdJm FROM tOddeleni WHERE ODID=Oddel_ID)||Jazyk",
         u"AB1999CD, E: FDrama, KomedieČesko116a; b|cx2K 5Sklep1"_s},
        {"nazev filmu,puvodni nazev,rezie,obsazeni,stat,poznamky\nA,B,C,D,E,F\n",
         "CZJm||PuvJm||Rezie||Herci||Stat||Poznamka", u"ABCDEF"_s},
        {"Title,Production Year,Genre,Nationality,Cast,Director,Language Tracks,Running Time,Plot "
         "Summary,Comments\n"
         "A,1964,Komedie; Muzikál,Itálie; USA,Karel Fiala:Joe|Rufus:|Eva,X; Y,Czech; English,99,a; "
         "b,c<br/>d\n",
         "CZJm||Rok||Zanr||Stat||Herci||Rezie||Jazyk||Delka||Obsah||replace(Poznamka,char(13,10),'/')",
         u"A1964Komedie, MuzikálItálie, USAKarel Fiala, Rufus, EvaX, Y099a; bc/d"_s},
        {"Title,Cast,Language\nA,B b::C;D::,English\n", "Herci||Jazyk", u"B b, D2"_s},
        {"Title,Original Title,Runtime (mins),Year,Genres,Directors\n,Die Hard,132,1988,\"Action, "
         "Thriller\",J\n",
         "CZJm||PuvJm||Delka||Rok||Zanr||Rezie", u"Die HardDie Hard1321988Action, ThrillerJ"_s},
        {"CZJm,Jazyk\nA,anglicky\n", "Jazyk", u"2"_s},
        {"Name,Year,Jazyk\nA,2001,\"cz dabing, titulky\"\n", "CZJm||Rok||Jazyk", u"A20010"_s},
        {"Title;Název\nB;A\n", "CZJm||PuvJm", u"AB"_s},
        {"SEP=|\r\nNázev|Rok\r\nA|1;2\r\n|\r\n\"\"| \r\n", "CZJm||Rok", u"A1;2"_s},
        {"CZJm,PuvJm,Herci,Zanr\nA,B,C:D|E:,F; G\n", "CZJm||PuvJm||Herci||Zanr", u"ABC:D|E:F; G"_s}};
    for (const auto& [csv, columns, film] : cases) {
        SCOPED_TRACE(csv.toStdString());
        load(csv);
        EXPECT_EQ(text("SELECT " + columns + " FROM tDVD WHERE DVDID>1"), film);
        sql("DELETE FROM tDVD WHERE DVDID>1");
    }
}

TEST_F(Tables, OptionsTellWhatBecomesOfUnknownColumnsGenresAndFilms) {
    const QByteArray csv =
        "Title,Year,Genre,KatCisl,Cover\nKOLJA,1996,Drama,,a\nA,,Sci-fi; Nový,7,b\nB,1996,nový,8,c\n";
    EXPECT_NE(failureOf([&] { load(csv); }), 0);
    const std::tuple<filmLoader::Options, QString, qint64, QStringList> cases[] = {
        {{.ignoreUnknown = true, .addGenres = true, .skipKnown = true, .dryRun = true},
         u"Kolja"_s,
         0,
         {u"Přidalo by se filmů: 1\n"_s, u"nic se nezapsalo"_s}},
        {{.ignoreUnknown = true, .skipKnown = true},
         u"Kolja,B"_s,
         0,
         {u"Přidáno filmů: 1\n"_s, u"opakují: 2\n"_s, u"Vynechané sloupce: Cover\n"_s,
          u"--add-genres): nový\n"_s,
          u"- řádek 2, KOLJA (1996): stejný název a rok\n- řádek 3, A: stejné katalogové číslo 7\n"_s,
          u"Vše souhlasí"_s}},
        {{.ignoreUnknown = true, .addGenres = true},
         u"Kolja,B,KOLJA,A,B"_s,
         1,
         {u"Přidáno filmů: 3\n"_s, u"Nové žánry v číselníku: Nový\n"_s, u"- řádek 4, B (1996): stejný"_s}}};
    for (const auto& [options, films, genres, told] : cases) {
        const QByteArray before = content(catalogue());
        const QString report = load(csv, options).text();
        for (const QString& each : told)
            EXPECT_TRUE(report.contains(each)) << each.toStdString() << report.toStdString();
        EXPECT_EQ(titles(), films);
        EXPECT_EQ(number("SELECT COUNT(*) FROM tZanr WHERE ZNAME='Nový'"), genres);
        const bool isUnchanged = content(catalogue()) == before && !QFile::exists(at(u"data/load.txt"_s));
        EXPECT_EQ(isUnchanged, options.dryRun);
    }
}

TEST_F(Tables, PicturesAreStoredAsTheEditorDoesAndComeBackWhole) {
    write(u"big.JPG"_s, jpeg(250001));
    write(u"small.png"_s, jpeg(10));
    // The picture of a deleted film, whose key is given again.
    UlozObal(3, at(u"small.png"_s));
    load("DVDID,CZJm,Oddeleni,Obal,Nahled\n3,A,Sklep,BIG.jpg,small.png\n4,B,,,\\N\n5,C,Sklep,,./big.JPG\n");
    EXPECT_EQ(text(pictures(), "SELECT COUNT(*)||max(length(PicDat)) FROM tPicture"), u"3250004"_s);
    EXPECT_TRUE(picture(u"data"_s, "Nahled_ID", 3).startsWith(u"3Npng10"_s));
    EXPECT_EQ(number("SELECT Obal_ID||Nahled_ID FROM tDVD WHERE DVDID=4"), 0);

    EXPECT_EQ(run({u"export"_s, at(u"data"_s), at(u"out"_s), u"--pictures"_s}).output,
              u"Zapsáno filmů: 4\nZapsáno obrázků: 3\n"_s);
    EXPECT_EQ(names(u"out"_s),
              QStringList({u"films.csv"_s, u"nahled-3.png"_s, u"nahled-5.JPG"_s, u"obal-3.jpg"_s}));
    EXPECT_EQ(content(u"out/nahled-5.JPG"_s), jpeg(250001));
    EXPECT_EQ(run({u"export"_s, u"--pictures"_s, at(u"data"_s), at(u"out"_s)}).exitCode, 1);
    dataFiles::create(at(u"other"_s));
    EXPECT_EQ(run({u"load"_s, at(u"other"_s), at(u"out"_s)}).exitCode, 0);
    for (const auto& [column, film] : {std::pair{"Obal_ID", 3}, {"Nahled_ID", 3}, {"Nahled_ID", 5}})
        EXPECT_EQ(picture(u"other"_s, column, film), picture(u"data"_s, column, film));
    const char* films =
        "SELECT group_concat(CZJm||IFNULL(OdJm,'-')||KatCisl||IFNULL(Obal_ID>0,'-')) FROM "
        "(SELECT * FROM tDVD LEFT JOIN tOddeleni ON ODID=Oddel_ID ORDER BY DVDID)";
    EXPECT_EQ(text(at(u"other/data.ddb"_s), films), text(films));

    sql(pictures(), "DELETE FROM tPicture WHERE PicDVDID=5");
    const Result partial = run({u"export"_s, at(u"data"_s), at(u"partial"_s), u"--pictures"_s});
    EXPECT_EQ(partial.exitCode, 3);
    EXPECT_TRUE(partial.output.contains(u"film 5, náhled číslo 3: obrázek chybí"_s))
        << partial.output.toStdString();
    // What is no picture, but was stored once, goes back as it came out.
    sql(pictures(), "UPDATE tPicture SET PicDat=zeroblob(PicSize+1) WHERE PicSkup='N'");
    EXPECT_EQ(run({u"export"_s, at(u"data"_s), at(u"zeros"_s), u"--pictures"_s}).exitCode, 3);
    dataFiles::create(at(u"third"_s));
    EXPECT_EQ(run({u"load"_s, at(u"third"_s), at(u"zeros"_s)}).exitCode, 0);
    EXPECT_EQ(picture(u"third"_s, "Nahled_ID", 3), u"3Npng10"_s + QString(20, u'0') + u"11"_s);
}

TEST_F(Tables, ExportRemovesWhatAKilledOneHasLeft) {
    ASSERT_TRUE(QDir().mkpath(at(u".kalvera-export-killed/x"_s)) &&
                QDir().mkpath(at(u".kalvera-export-busy"_s)) &&
                QFile::link(at(u"data"_s), at(u".kalvera-export-link"_s)));
    const FolderLock busy(at(u".kalvera-export-busy"_s));
    const QStringList before = names(u""_s);
    EXPECT_EQ(run({u"export"_s, at(u"data"_s), at(u"z"_s), u"--pictures"_s}).exitCode, 0);
    QStringList after = before + QStringList{u"z"_s};
    after.removeAll(u".kalvera-export-killed"_s);
    EXPECT_EQ(names(u""_s), after);
    EXPECT_EQ(names(u"data"_s).size(), 2);
    EXPECT_EQ(names(u"z"_s), QStringList{u"films.csv"_s});
}

TEST_F(Tables, PictureFileOfAKilledWriterIsRolledBackAndLoadedInto) {
    write(u"a.jpg"_s, jpeg(10));
    sql(pictures(), "INSERT INTO tPicture (PicDVDID) VALUES (7)");
    {
        const sqlite::Database writer(pictures(), sqlite::Database::Mode::readWrite);
        sqlite::Transaction transaction(writer);
        writer.exec("DELETE FROM tPicture");
        sqlite3_db_cacheflush(writer.handle());
        for (const QString& end : {u""_s, u"-journal"_s})
            ASSERT_TRUE(QFile::copy(pictures() + end, at(u"killed"_s + end)));
    }
    ASSERT_TRUE(QFile::remove(pictures()));
    for (const QString& end : {u""_s, u"-journal"_s})
        ASSERT_TRUE(QFile::rename(at(u"killed"_s + end), pictures() + end));
    EXPECT_EQ(load("CZJm,Obal\nA,a.jpg\n").pictures, 1);
    EXPECT_EQ(text(pictures(), "SELECT COUNT(*) FROM tPicture"), u"2"_s);
}

TEST_F(Tables, RowsWithoutATitleAndFilmsThatListsLackAreNamed) {
    const QString told =
        load("Číslo,Název,Jazyk,Cena\n8,,,\n,,,5\n\\N,A\x1b[31m,,\n,,,\n9,B,\\N,\n", {.ignoreUnknown = true})
            .text();
    EXPECT_TRUE(told.contains(u"Filmů v souboru: 4\nPřidáno filmů: 3\n"_s) &&
                told.contains(u"(doplní je kalvera-data repair): 2\n"_s) &&
                told.contains(u"film z nich není:\n- řádek 3\n\nFilmy bez názvu:\n- řádek 2, DVDID 2\n\n"_s))
        << told.toStdString();
    EXPECT_TRUE(load("Název\nA\x1b[31m\n").text().contains(u"řádek 2, A\uFFFD[31m: stejný název\n"_s));
}

TEST_F(Tables, FaultLeavesNeitherFilmsNorPictures) {
    write(u"a.jpg"_s, jpeg(10));
    write(u"none.jpg"_s, noise(10));
    write(u"a"_s, jpeg(10));
    write(u"empty.jpg"_s, {});
    write(u"huge.jpg"_s, jpeg(10));
    ASSERT_TRUE(QFile::resize(at(u"huge.jpg"_s), 1'500'000'000));
    ASSERT_TRUE(QDir().mkpath(at(u"folder.jpg"_s)));
    const std::pair<QByteArray, QString> cases[] = {
        {"CZJm,Obal\nA,a.jpg\nB,b.jpg\n", u"Řádek 3: obrázek „b.jpg“ chybí."_s},
        {"CZJm,Obal\nA,a.jpg\nB,folder.jpg\n", u"Řádek 3: obrázek „folder.jpg“ není soubor."_s},
        {"CZJm,Nahled\nA,a.jpg\nB,empty.jpg\n", u"Řádek 3: obrázek „empty.jpg“ je prázdný."_s},
        {"CZJm,Obal\nA,none.jpg\n", u"Řádek 2: obrázek „none.jpg“ není obrázek, který"_s},
        {"CZJm,Obal\nA,a\n", u"Řádek 2: obrázek „a“ nemá v názvu příponu."_s},
        {"CZJm,Obal\nA,huge.jpg\n", u"Řádek 2: obrázek „huge.jpg“ je příliš velký: má 1500 MB"_s},
        {"CZJm,Obal,Rok\nA,a.jpg,1\nB,a.jpg\n", u"Řádek 3: polí je 2, v hlavičce 3."_s},
        // The report cannot be written.
        {"CZJm,Obal\nA,a.jpg\n", u"load.txt"_s}};
    for (const auto& [csv, told] : cases) {
        if (told == u"load.txt"_s) QDir().mkpath(at(u"data/load.txt/x"_s));
        const QString description = descriptionOf([&, &csv = csv] { load(csv); });
        EXPECT_TRUE(description.contains(told)) << description.toStdString();
        EXPECT_EQ(titles(), u"Kolja"_s);
        EXPECT_EQ(text(pictures(), "SELECT COUNT(*) FROM tPicture"), u"0"_s);
    }
}

TEST_F(Tables, FilmsThatAreThereOrRepeatedAreNamedOrLeftOut) {
    sql("INSERT INTO tDVD (KatCisl,CZJm) VALUES ('x','Bez roku')");
    const QByteArray csv =
        "DVDID,CZJm,Rok,KatCisl\n1,Jiný,1,\n,B,2000,\n,b,2000,\n,C,,3\n,BEZ ROKU,,\n9,D,,\n9,E,,\n";
    const QString text = load(csv, {.skipKnown = true}).text();
    EXPECT_TRUE(text.contains(
        u"\nUž v katalogu:\n- řádek 2, Jiný (1): stejné DVDID 1\n- řádek 6, BEZ ROKU: stejný název\n"
        "\nOpakují se v tabulce:\n- řádek 4, b (2000): stejný název a rok jako na řádku 3\n"
        "- řádek 5, C: stejné katalogové číslo 3 jako na řádku 3\n"
        "- řádek 8, E: stejné DVDID 9 jako na řádku 7\n\nVše souhlasí: v katalogu přibyly všechny filmy ze "
        "souboru, které v něm ještě nebyly.\n"_s))
        << text.toStdString();
    EXPECT_EQ(titles(), u"Kolja,Bez roku,B,D"_s);
    EXPECT_EQ(descriptionOf([&] { load(csv); }).section(u'\n', 0, 1),
              u"Řádek 2: film s DVDID 1 v katalogu už je. Vynechá ho volba --skip-known.\n"
              "Řádek 7: film s DVDID 9 v katalogu už je. Vynechá ho volba --skip-known."_s);
    const LoadReport twice = load("CZJm,Rok\nB,2000\nZ,1\nZ,1\nD,\n");
    EXPECT_TRUE(twice.agrees() && twice.verdict().contains(u"některé jsou v něm teď vícekrát (3)"))
        << twice.verdict().toStdString();
    const QString shortened = twice.text(1);
    EXPECT_TRUE(shortened.contains(u"- řádek 2, B (2000): stejný název a rok\n… a dalších: 1 (") &&
                !shortened.contains(u"řádek 5"))
        << shortened.toStdString();
}

TEST_F(Tables, KeyOfAPictureStaysOnlyWhereThePairHasItForThisFilm) {
    write(u"a.jpg"_s, jpeg(10));
    load("DVDID,CZJm,Obal,Nahled\n2,A,a.jpg,\n3,B,a.jpg,a.jpg\n");
    EXPECT_EQ(run({u"export"_s, at(u"data"_s), at(u"plain.csv"_s)}).exitCode, 0);
    const char* links = "SELECT group_concat(DVDID||' '||Obal_ID||' '||Nahled_ID) FROM tDVD WHERE DVDID>1";
    sql("DELETE FROM tDVD");
    EXPECT_EQ(run({u"load"_s, at(u"data"_s), at(u"plain.csv"_s)}).exitCode, 0);
    EXPECT_EQ(text(links), u"2 1 0,3 2 3"_s);
    // The other pair has a picture of its own under each of the keys.
    dataFiles::create(at(u"other"_s));
    sql(at(u"other/pictures.ddb"_s),
        "INSERT INTO tPicture (PicDVDID, PicSkup) VALUES (2, 'N'), (7, 'O'), (3, 'N')");
    const QString told = run({u"load"_s, at(u"other"_s), at(u"plain.csv"_s)}).output;
    EXPECT_TRUE(told.contains(u"u těchto filmů v katalogu nejsou: 2\n")) << told.toStdString();
    EXPECT_EQ(text(at(u"other/data.ddb"_s), links), u"2 0 0,3 0 3"_s);
}

TEST_F(Tables, DryRunNeedsNothingThatCanBeWritten) {
    write(u"a.jpg"_s, jpeg(10));
    write(u"films.csv"_s, "CZJm,Obal,Oddeleni\nA,a.jpg,Sklep\nB,,\n");
    makeReadOnly();
    const OrdinaryUser user;
    const QString told = filmLoader::load(at(u"data"_s), at(u"films.csv"_s), {.dryRun = true},
                                          [](const QString&, qint64, qint64) {})
                             .text();
    EXPECT_TRUE(told.contains(u"Přidalo by se filmů: 2\n") && told.contains(u"Uložilo by se obrázků: 1\n") &&
                told.contains(u"Nová oddělení: Sklep\n"))
        << told.toStdString();
}
