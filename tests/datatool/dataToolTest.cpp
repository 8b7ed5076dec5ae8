#include <sys/stat.h>

#include <QDir>
#include <QProcess>

#include "datatool/DataFiles.h"
#include "datatool/FilmLoader.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class DataFiles : public TemporaryProgram {
 protected:
    /// The exit code of the program and what it wrote.
    static QString run(const QStringList& arguments) {
        QProcess program;
        program.start(QStringLiteral(KALVERA_DATA), arguments);
        EXPECT_TRUE(program.waitForFinished() && program.exitStatus() == QProcess::NormalExit);
        const QByteArray written = program.readAllStandardOutput() + program.readAllStandardError();
        return u"%1 %2"_s.arg(program.exitCode()).arg(QString::fromUtf8(written));
    }
    QStringList names(const QString& path) const {
        return QDir(at(path)).entryList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::System |
                                        QDir::NoDotAndDotDot);
    }
    qint64 load(const QByteArray& csv) const {
        write(u"films.csv"_s, csv);
        return filmLoader::load(at(u"data"_s), at(u"films.csv"_s), [](qint64) {}).added;
    }
};

}  // namespace

TEST_F(DataFiles, NewFilesAreForTheOwnerOnlyAndOfferTheUsualLists) {
    EXPECT_EQ(names(u"data"_s), QStringList({u"data.ddb"_s, u"pictures.ddb"_s}));
    for (const QString& path : {catalogue(), pictures()}) {
        struct stat state {};
        ASSERT_EQ(stat(path.toUtf8().constData(), &state), 0);
        EXPECT_EQ(state.st_mode & 07777, 0600U) << path.toStdString();
    }
    EXPECT_EQ(text("SELECT ZNAME FROM tZanr ORDER BY ZNAME DESC"), u"Životopisný"_s);
    EXPECT_EQ(number("SELECT COUNT(*) FROM tOddeleni WHERE OdJm='dětské FILMY'"), 1);
    EXPECT_EQ(number("SELECT COUNT(*) FROM tDVD"), 0);
}

TEST_F(DataFiles, ExistingFileIsKeptAndTheOtherIsNotMade) {
    for (const QString& name : {u"data.ddb"_s, u"pictures.ddb"_s}) {
        const QString mine = u"with %1"_s.arg(name);
        ASSERT_TRUE(QDir().mkpath(at(mine)));
        write(mine + u'/' + name, "my films");
        EXPECT_EQ(failureOf([&] { dataFiles::create(at(mine)); }), 75);
        EXPECT_EQ(names(mine), QStringList{name});
        EXPECT_EQ(content(mine + u'/' + name), "my films");
    }
    write(u"file"_s, "in the way");
    EXPECT_EQ(failureOf([&] { dataFiles::create(at(u"file/mine"_s)); }), 75);
}

TEST_F(DataFiles, CatalogueGoesAgainWhenThePictureFileCannotBeMade) {
    ASSERT_TRUE(QDir().mkpath(at(u"mine"_s)));
    ASSERT_TRUE(QFile::link(at(u"nowhere.ddb"_s), at(u"mine/pictures.ddb"_s)));
    EXPECT_NE(failureOf([&] { dataFiles::create(at(u"mine"_s)); }), 0);
    EXPECT_EQ(names(u"mine"_s), QStringList{u"pictures.ddb"_s});
    EXPECT_FALSE(QFile::exists(at(u"nowhere.ddb"_s)));
}

TEST_F(DataFiles, KeysThatTheProgramCannotCountOnFromAreRefused) {
    for (const char* key : {"0", "-5", "2147483647", "2000000001"})
        EXPECT_NE(failureOf([&] { load(QByteArray("DVDID,CZJm\n") + key + ",x\n"); }), 0) << key;
    EXPECT_EQ(load("DVDID,CZJm\n41,x\n"), 1);
}

TEST_F(DataFiles, HeaderNamesColumnsInAnyCaseAndOrder) {
    EXPECT_EQ(load("\xEF\xBB\xBFROK, oddel_id ,czjm,DISKPOCET,Obsah,KatCisl\r\n"
                   "1996,3,Kolja, 2 ,\"Praha, \"\"Žižkov\"\"\r\ndruhý řádek\",X 7\r\n"
                   "1991,,Obecná škola,1, b ,\r\n"),
              2);
    EXPECT_EQ(text("SELECT Rok||'|'||Oddel_ID||'|'||DiskPocet||'|'||Obsah||'|'||KatCisl FROM tDVD WHERE "
                   "CZJm='Kolja'"),
              u"1996|3|2|Praha, \"Žižkov\"\r\ndruhý řádek|X 7"_s);
    EXPECT_EQ(text("SELECT Obsah FROM tDVD WHERE CZJm='Obecná škola' AND Oddel_ID IS NULL"), u" b "_s);
}

TEST_F(DataFiles, WhatTheFileLeavesOutGetsTheUsualContent) {
    const QByteArray blank =
        "CZJm,KatCisl,Jazyk,Obal_ID,Nahled_ID,Oddel_ID,DiskPocet,Herci\nKolja,,, ,,  ,,  \n";
    for (const QByteArray& csv : {QByteArray("CZJm\nKolja"), blank}) {
        SCOPED_TRACE(csv.toStdString());
        EXPECT_EQ(load(csv), 1);
        EXPECT_EQ(
            number("SELECT COUNT(*) FROM tDVD WHERE DiskPocet=1 AND Jazyk=2 AND Obal_ID=0 AND Nahled_ID=0 "
                   "AND Oddel_ID IS NULL AND KatCisl=CAST(DVDID AS TEXT)"),
            1);
        EXPECT_EQ(text("SELECT CZJm||PuvJm||Zanr||Obsah||Stat||Rezie||Delka||Rok||Herci||Poznamka||Nabidka||"
                       "JazykDetail||Titulky FROM tDVD"),
                  u"Kolja"_s);
        sql("DELETE FROM tDVD");
    }
}

TEST_F(DataFiles, BlankCatalogueNumberBecomesTheKey) {
    load("CZJm,KatCisl,DVDID\nA,,\nB,N 5,\nC,  ,\nD,,40\nE,,\n");
    EXPECT_EQ(text("SELECT group_concat(KatCisl) FROM (SELECT KatCisl FROM tDVD ORDER BY CZJm)"),
              u"1,N 5,3,40,41"_s);
    // A key that has been given out never comes again.
    sql("DELETE FROM tDVD");
    load("CZJm\nF\n");
    EXPECT_EQ(text("SELECT KatCisl FROM tDVD"), u"42"_s);
}

TEST_F(DataFiles, FileWithAnyFaultAddsNoFilmAtAll) {
    const std::tuple<const char*, QByteArray, QString> cases[] = {
        {"empty", "", u"prázdný"_s},
        {"unknown column", "CZJm,Cena\nKolja,5\n", u"Řádek 1: neznámý sloupec \"Cena\""_s},
        {"column without a name", "CZJm,\nKolja,\n", u"Řádek 1"_s},
        {"column twice", "\nCZJm,Rok,czjm\nKolja,1996,Kolja\n", u"Řádek 2: sloupec \"czjm\""_s},
        {"field missing", "CZJm,Rok\nKolja,1996\nVratné lahve\n", u"Řádek 3"_s},
        {"field too many", "CZJm,Rok\nKolja,1996\nVratné lahve,2007,\n", u"Řádek 3"_s},
        {"fault after a field of two lines", "CZJm,Obsah\nKolja,\"a\nb\"\nLahve\n", u"Řádek 4"_s},
        {"word for a number", "CZJm,DiskPocet\nKolja,1\nLahve,dva\n", u"Řádek 3: sloupec DiskPocet"_s},
        {"fraction", "CZJm,DiskPocet\nKolja,1\nLahve,1.5\n", u"Řádek 3: sloupec DiskPocet"_s},
        {"number too large", "CZJm,Obal_ID\nKolja,1\nLahve,2147483648\n", u"Řádek 3: sloupec Obal_ID"_s},
        {"key twice", "DVDID,CZJm\n5,Kolja\n5,Lahve\n", u"Řádek 3"_s},
        {"quote left open", "CZJm\nKolja\n\"Lahve\n", u"Řádek 3"_s},
        {"two bad lines", "CZJm,DiskPocet\nA,x\nB,1\nC,y\n", u"\nŘádek 4: sloupec DiskPocet"_s},
        {"byte that is no UTF-8", "CZJm\nPel\xC3\xAD\xC5\xA1ky\nPel\xED", u"Řádek 3: znak"_s},
        {"the same behind a mark",
         "\xEF\xBB\xBF"
         "CZJm\nPel\xED\x9Aky\n",
         u"Řádek 2: znak"_s}};
    for (const auto& [fault, csv, told] : cases) {
        SCOPED_TRACE(fault);
        try {
            ADD_FAILURE() << "added " << load(csv);
        } catch (const RuntimeError& failure) {
            EXPECT_TRUE(failure.description().contains(told)) << failure.what();
        }
        EXPECT_EQ(number("SELECT COUNT(*) FROM tDVD"), 0);
        sql("DELETE FROM tDVD");
    }
}

TEST_F(DataFiles, BothCodePagesAndSeparatorsAreUnderstood) {
    const std::tuple<QByteArray, QString, QChar> cases[] = {
        {"CZJm;Rok;Obsah\nPel\xED\x9Aky;1999;a,b\n", u"Windows-1250"_s, u';'},
        {"CZJm,Rok,Obsah\r\nPel\xED\x9Aky,1999,\"a,b\"\r\n", u"Windows-1250"_s, u','},
        {"CZJm;Rok;Obsah\nPelíšky;1999;a,b\n", u"UTF-8"_s, u';'},
        {"\xEF\xBB\xBF\"CZJm\";Rok;Obsah\nPelíšky;\"1999\";a,b\n", u"UTF-8"_s, u';'}};
    for (const auto& [csv, encoding, separator] : cases) {
        SCOPED_TRACE(csv.toStdString());
        write(u"films.csv"_s, csv);
        const auto report = filmLoader::load(at(u"data"_s), at(u"films.csv"_s), [](qint64) {});
        EXPECT_EQ(report.encoding, encoding);
        EXPECT_EQ(report.separator, separator);
        EXPECT_EQ(text("SELECT CZJm||Rok||Obsah FROM tDVD"), u"Pelíšky1999a,b"_s);
        sql("DELETE FROM tDVD");
    }
}

TEST_F(DataFiles, BlankNullAndEmptyTextStayApart) {
    load(
        "CZJm,KatCisl,Rok,DiskPocet,Stat,Zanr\nA,,,,,\nB,\"\",\"\",\"\",\\N,\"\\N\"\nC,\\N,\\\\N,\\N,\" "
        "\",x\n");
    EXPECT_EQ(
        text("SELECT group_concat(quote(KatCisl)||quote(Rok)||quote(DiskPocet)||quote(Stat)||quote(Zanr),"
             "' ') FROM (SELECT * FROM tDVD ORDER BY CZJm)"),
        u"'1'''1'''' ''''1NULLNULL NULL'\\N'NULL' ''x'"_s);
}

TEST_F(DataFiles, DepartmentsComeByNameAndAreMadeWhenMissing) {
    load("CZJm,Oddel_ID,oddeleni\nA,,dětské FILMY\nB,2,Sklep\nC,70,Sklep\nD,70,Půda\nE,77,\nF,\\N,\\N\n");
    EXPECT_EQ(text("SELECT group_concat(CZJm||IFNULL(Oddel_ID,'-')||IFNULL(OdJm,'-'),' ') FROM "
                   "(SELECT * FROM tDVD LEFT JOIN tOddeleni ON ODID=Oddel_ID ORDER BY CZJm)"),
              u"A2Dětské filmy B6Sklep C6Sklep D70Půda E77- F--"_s);
}

TEST_F(DataFiles, LoadingMakesNoCatalogueAndNeedsAFile) {
    EXPECT_EQ(failureOf([&] { filmLoader::load(at(u"data"_s), at(u"none.csv"_s), [](qint64) {}); }), 53);
    write(u"films.csv"_s, "CZJm\nKolja\n");
    EXPECT_NE(failureOf([&] { filmLoader::load(at(u"none"_s), at(u"films.csv"_s), [](qint64) {}); }), 0);
    EXPECT_FALSE(QFile::exists(at(u"none"_s)));
}

TEST_F(DataFiles, ProgramTellsWhatItDidAndOverwritesNothing) {
    write(u"films.csv"_s, "CZJm\nKolja\nObecná škola\n");
    write(u"bad.csv"_s, "CZJm,Rok\nKolja\n");
    const QStringList create{u"create"_s, at(u"new"_s)};
    EXPECT_EQ(run(create), u"0 Vytvořeno: %1/new/data.ddb, %1/new/pictures.ddb\n"_s.arg(folder()));
    const QString loaded = run({u"load"_s, at(u"new"_s), at(u"films.csv"_s)});
    EXPECT_EQ(loaded, u"0 "_s + QString::fromUtf8(content(u"new/load.txt"_s)));
    EXPECT_TRUE(content(u"new/load.txt"_s).contains("Přidáno filmů: 2\n"));
    const QByteArray before = content(u"new/data.ddb"_s);
    EXPECT_TRUE(run(create).startsWith(u"1 Chyba: Soubor již existuje a nebude přepsán: "_s));
    EXPECT_TRUE(run({u"load"_s, at(u"new"_s), at(u"bad.csv"_s)}).startsWith(u"1 Chyba: Řádek 2: "_s));
    EXPECT_TRUE(run({u"create"_s}).startsWith(u"2 Použití:\n"_s));
    EXPECT_EQ(content(u"new/data.ddb"_s), before);
}
