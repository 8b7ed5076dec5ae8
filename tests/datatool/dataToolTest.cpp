#include "core/mVerze.h"
#include "datatool/CommandLine.h"
#include "datatool/DataFiles.h"
#include "datatool/FilmLoader.h"
#include "datatool/NewPair.h"
#include "datatool/importFixture.h"

namespace {

constexpr auto usual =
    "DiskPocet||Jazyk||Obal_ID||Nahled_ID||IFNULL(Oddel_ID,'-')||(KatCisl=DVDID)||CZJm||PuvJm||Zanr||Obsah||"
    "Stat||Rezie||Delka||Rok||Herci||Poznamka||Nabidka||JazykDetail||Titulky";

void noProgress(const QString&, qint64, qint64) {}

class DataFiles : public OldPair {
 protected:
    LoadReport load(const QByteArray& csv) const {
        write(u"films.csv"_s, csv);
        return filmLoader::load(at(u"data"_s), at(u"films.csv"_s), {}, noProgress);
    }
};

}  // namespace

TEST_F(DataFiles, NewFilesAreForTheOwnerOnlyAndOfferTheUsualLists) {
    EXPECT_EQ(names(u"data"_s), QStringList({u"data.ddb"_s, u"pictures.ddb"_s}));
    for (const QString& path : {catalogue(), pictures()})
        EXPECT_EQ(QFile::permissions(path), QFile::Permissions(0x6600)) << path.toStdString();
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
    ASSERT_TRUE(QDir().mkpath(at(u"link"_s)) &&
                QFile::link(at(u"nowhere.ddb"_s), at(u"link/pictures.ddb"_s)));
    EXPECT_NE(failureOf([&] { dataFiles::create(at(u"link"_s)); }), 0);
    EXPECT_EQ(names(u"link"_s), QStringList{u"pictures.ddb"_s});
    EXPECT_FALSE(QFile::exists(at(u"nowhere.ddb"_s)));
}

TEST_F(DataFiles, FailureToKeepAPairNamesTheFileAndLeavesNone) {
    NewPair pair(at(u"mine"_s));
    ASSERT_TRUE(QDir().mkpath(at(u"mine/data.ddb"_s)));
    try {
        pair.keep();
        ADD_FAILURE();
    } catch (const RuntimeError& failure) {
        EXPECT_TRUE(failure.description().endsWith(u"data.ddb"_s));
    }
    EXPECT_FALSE(QFile::exists(at(u"mine/pictures.ddb"_s)));
}

TEST_F(DataFiles, FilmsAreLoadedWithTheUsualContentWhereTheFileSaysNothing) {
    // A file, how it is written, columns of its films by title, and what they hold.
    const std::tuple<QByteArray, QString, QByteArray, QString> cases[] = {
        {"\xEF\xBB\xBFROK, oddel_id ,czjm,DISKPOCET,Obsah,KatCisl\r\n"
         "1996,3,Kolja, 2 ,\"Praha, \"\"Žižkov\"\"\r\ndruhý řádek\",X 7\r\n1991,,Obecná škola,1, b ,\r\n",
         u"UTF-8,"_s, "Rok||IFNULL(Oddel_ID,'-')||CZJm||DiskPocet||Obsah||KatCisl",
         u"19963Kolja2Praha, \"Žižkov\"\r\ndruhý řádekX 7 1991-Obecná škola1 b 2"_s},
        {"CZJm;KatCisl;Jazyk;Obal_ID;Nahled_ID;Oddel_ID;DiskPocet;Herci\nKolja;;; ;;  ;;  \n;; ;;;;;\n",
         u"UTF-8;"_s, usual, u"1200-1Kolja"_s},
        {"CZJm\nPel\xED\x9Aky", u"Windows-1250,"_s, usual, u"1200-1Pelíšky"_s},
        {"CZJm;Rok;Obsah\nPel\xED\x9Aky;1999;a,b\n", u"Windows-1250;"_s, "CZJm||Rok||Obsah",
         u"Pelíšky1999a,b"_s},
        {"\xEF\xBB\xBF\"CZJm\";Rok;Obsah\nPelíšky;\"1999\";a,b\n", u"UTF-8;"_s, "CZJm||Rok||Obsah",
         u"Pelíšky1999a,b"_s},
        {"CZJm,KatCisl,DVDID\nA,,\nB,N 5,\nC,  ,\nD,,40\nE,,\n", u"UTF-8,"_s, "KatCisl", u"1 N 5 3 40 41"_s},
        {"CZJm,KatCisl,Rok,DiskPocet,Stat,Zanr\nA,,,,,\nB,\"\",\"\",\"\",\\N,\"\\N\"\n"
         "C,\\N,\\\\N,\\N,\" \",x\n",
         u"UTF-8,"_s, "quote(KatCisl)||quote(Rok)||quote(DiskPocet)||quote(Stat)||quote(Zanr)",
         u"'1'''1'''' ''''1NULLNULL NULL'\\N'NULL' ''x'"_s},
        {"CZJm,Oddel_ID,oddeleni\nA,,dětské FILMY\nB,2,Sklep\nC,70,Sklep\nD,70,Půda\nE,77,\nF,\\N,\\N\n",
         u"UTF-8,"_s, "CZJm||IFNULL(Oddel_ID,'-')||IFNULL(OdJm,'-')",
         u"A2Dětské filmy B6Sklep C6Sklep D70Půda E77- F--"_s},
        {"CZJm,Oddel_ID,Oddeleni\nA,2,\\N\nB,3,\"\"\nC,\\N,\"\"\nD,3,\"\"\n", u"UTF-8,"_s,
         "CZJm||IFNULL(Oddel_ID,'-')||quote(OdJm)", u"A71NULL B72'' C-NULL D72''"_s},
        {"\xFF\xFE" + utf16(u"CZJm\tRok\nPelíšky\t1999"), u"UTF-16\t"_s, "CZJm||Rok", u"Pelíšky1999"_s},
        {"CZJm;Rok\r\"Kolja\";1996\r\r", u"UTF-8;"_s, "CZJm||Rok", u"Kolja1996"_s},
        {QByteArray("\xFE\xFF\0C\0Z\0J\0m\0\n\1\x7D", 14), u"UTF-16,"_s, "CZJm", u"Ž"_s},
        {"CZJm\nK\xD8\xCD\x8E\nP\xF8\xED\x9AT\xCC\x8E\n", u"Windows-1250,"_s, "CZJm", u"KŘÍŽ PříšTĚŽ"_s}};
    for (const auto& [csv, written, columns, films] : cases) {
        SCOPED_TRACE(csv.toStdString());
        const LoadReport report = load(csv);
        EXPECT_EQ(report.encoding + report.separator, written);
        EXPECT_EQ(report.added, number("SELECT COUNT(*) FROM tDVD"));
        EXPECT_EQ(text("SELECT group_concat(" + columns +
                       ",' ') FROM (SELECT * FROM tDVD "
                       "LEFT JOIN tOddeleni ON ODID=Oddel_ID ORDER BY CZJm)"),
                  films);
        sql("DELETE FROM tDVD; DELETE FROM sqlite_sequence WHERE name='tDVD'");
    }
}

TEST_F(DataFiles, FileWithAnyFaultAddsNoFilm) {
    const std::pair<QByteArray, QString> cases[] = {
        {"", u"prázdný"_s},
        {"CZJm,Cena\nKolja,5\n", u"Řádek 1: neznámé sloupce: „Cena“. S"_s},
        {"Pelíšky;1999\nKolja;1996\n", u"Řádek 1: žádný sloupec tu není nadepsaný jako název filmu"_s},
        {"Rok;Cena\n1999;1\n", u"Řádek 1: žádný sloupec tu"_s},
        {"PK\x03\x04z", u"je to sešit tabulkového"_s},
        {"\xFF\xD8\xFF\xE0z", u"je to obrázek"_s},
        {utf16(u"CZJm\nA\n"), u"v kódování UTF-16 bez značky"_s},
        {"Titul,Rok,Film\nKolja,1996,Kolja\n",
         u"Řádek 1: sloupce „Titul“ a „Film“ znamenají totéž. Jeden z nich přejmenujte"_s},
        {"Title,Titul,Původní název\nA,B,C\n", u"sloupce „Title“ a „Titul“ znamenají totéž."_s},
        {"\nCZJm,Rok,czjm\nKolja,1996,Kolja\n", u"Řádek 2: sloupce „CZJm“ a „czjm“ znamenají totéž."_s},
        {"CZJm,Rok, \nKolja,1996,\n", u"Řádek 1: sloupec 3 nemá nadpis."_s},
        {"CZJm,Rok\nKolja,1996\nVratné lahve\n", u"Řádek 3"_s},
        {"CZJm,Rok\nKolja,1996\nVratné lahve,2007,\n", u"Řádek 3"_s},
        {"CZJm,Počet disků\nKolja,1\nLahve,dva\n",
         u"Řádek 3: sloupec „Počet disků“ má být celé číslo a je „dva“"_s},
        {"CZJm,Obal_ID\nKolja,1\nLahve,2147483648\n", u"Řádek 3: sloupec „Obal_ID“"_s},
        {"DVDID,CZJm\n5,Kolja\n5,Lahve\n", u"Řádek 3: film s DVDID 5 už je na řádku 2. Vynechá"_s},
        {"DVDID,CZJm\n0,x\n", u"Řádek 2: sloupec DVDID"_s},
        {"DVDID,CZJm\n2000000001,x\n", u"Řádek 2: sloupec DVDID"_s},
        {"CZJm\nKolja\n\"Lahve\n", u"Řádek 3"_s},
        {"CZJm,DiskPocet\nA,x\nB,1\nC,y\n", u"\nŘádek 4: sloupec „DiskPocet“"_s},
        {"CZJm\nPel\xC3\xAD\xC5\xA1ky\nPel\xED", u"Řádek 3: znak"_s},
        {"\xEF\xBB\xBF\x43ZJm\nPel\xED\x9A\x6By\n", u"Řádek 2: znak"_s},
        {"CZJm\nKolja\nPel\xC3\xAD\xC5\xA1ky\nP\xF8\xED\x9A\x65ra\n", u"Řádek 3: znak je v kódování UTF-8"_s},
        {"CZJm\nPel\xED\x9Aky\nA\x98\n", u"Řádek 3: bajt 98"_s},
        {QByteArray("CZJm\nA\0\n", 8), u"Řádek 2: je tu nulový znak"_s},
        {"\xFF\xFE" + utf16(u"CZJm\nA") + '\n', u"Řádek 2: soubor v kódování UTF-16"_s},
        {"\xFF\xFE" + utf16(u"CZJm\nA") + "\x01\xD8\x41", u"Řádek 2: soubor v kódování UTF-16"_s}};
    for (const auto& [csv, told] : cases) {
        const QString description = descriptionOf([&, &csv = csv] { load(csv); });
        EXPECT_TRUE(description.contains(told)) << csv.toStdString() << description.toStdString();
        EXPECT_EQ(number("SELECT COUNT(*) FROM tDVD"), 0);
        sql("DELETE FROM tDVD");
    }
    EXPECT_EQ(failureOf([&] { filmLoader::load(at(u"data"_s), at(u"none.csv"_s), {}, noProgress); }), 53);
    EXPECT_EQ(failureOf([&] { filmLoader::load(at(u"data"_s), u"/dev/zero"_s, {}, noProgress); }), 75);
    EXPECT_NE(failureOf([&] { filmLoader::load(at(u"none"_s), at(u"films.csv"_s), {}, noProgress); }), 0);
    EXPECT_FALSE(QFile::exists(at(u"none"_s)));
}

TEST_F(DataFiles, ProgramTellsWhatItDid) {
    write(u"films.csv"_s, "CZJm\nKolja\nObecná škola\n");
    write(u"bad.csv"_s, "CZJm,Rok\nKolja\n");
    const QString made = u"Vytvořeno: %1/new/data.ddb, %1/new/pictures.ddb\n"_s.arg(folder());
    EXPECT_EQ(run({u"create"_s, at(u"new"_s)}).output, made);
    const Result loaded = run({u"load"_s, at(u"new"_s), at(u"films.csv"_s)});
    EXPECT_EQ(loaded.exitCode, 0);
    EXPECT_EQ(loaded.output.toUtf8(), content(u"new/load.txt"_s));
    EXPECT_TRUE(loaded.output.contains(u"Přidáno filmů: 2\n"_s));
    EXPECT_TRUE(run({u"create"_s, at(u"new"_s)})
                    .errors.startsWith(u"Chyba: Soubor již existuje a nebude přepsán: "_s));
    // Arguments, exit code, beginnings of standard output and standard error.
    const std::tuple<QStringList, int, QString, QString> calls[] = {
        {{u"load"_s, at(u"new"_s), at(u"bad.csv"_s)}, 1, {}, u"Chyba: Řádek 2: "_s},
        {{u"load"_s, at(u"none"_s), at(u"bad.csv"_s)}, 1, {}, u"Chyba: Soubor databáze nelze otevřít."_s},
        {{u"export"_s, at(u"new"_s), at(u"none/a.csv"_s)}, 1, {}, u"Chyba: Nadřazená složka neexistuje: "_s},
        {{u"export"_s, at(u"new"_s), at(QString(300, u'a'))}, 1, {}, u"Chyba: Jméno je příliš dlouhé: "_s},
        {{u"backup"_s, u"--keep"_s, u"99999999999"_s},
         2,
         {},
         u"Chyba: Volba --keep potřebuje počet záloh od 1 do"_s},
        {{u"check"_s, u"--"_s, u"--help"_s}, 1, {}, u"Chyba: Soubor neexistuje: --help/"_s},
        {{u"-h"_s}, 0, u"Použití: kalvera-data PŘÍKAZ"_s, {}},
        {{u"backup"_s, u"-h"_s}, 0, u"Použití: kalvera-data backup"_s, {}},
        {{u"check"_s, {}}, 2, {}, u"Chyba: Údaj příkazu je prázdný.\n"_s},
        {{}, 2, {}, u"Chyba: Chybí příkaz.\nPoužití: "_s},
        {{u"help"_s}, 2, {}, u"Chyba: Neznámý příkaz: help\nPoužití: "_s},
        {{u"create"_s},
         2,
         {},
         u"Chyba: Příkazu chybí některý údaj.\nPoužití: kalvera-data create SLOŽKA\n"_s},
        {{u"create"_s, u"--"_s, u"-a"_s, u"b"_s}, 2, {}, u"Chyba: Příkaz dostal víc údajů"_s},
        {{u"load"_s, u"--pictures"_s, u"a"_s, u"b"_s}, 2, {}, u"Chyba: Neznámá volba: --pictures\n"_s},
        {{u"load"_s, u"--dry-run=1"_s, u"a"_s, u"b"_s},
         2,
         {},
         u"Chyba: Volba --dry-run žádnou hodnotu nepřijímá.\n"_s},
        {{u"--help"_s}, 0, u"Použití: kalvera-data PŘÍKAZ"_s, {}},
        {{u"load"_s, u"--help"_s}, 0, u"Použití: kalvera-data load SLOŽKA FILMY.csv ["_s, {}},
        {{u"--version"_s}, 0, u"kalvera-data "_s + verze::text(), {}}};
    for (const auto& [arguments, exitCode, output, errors] : calls) {
        const Result result = run(arguments);
        SCOPED_TRACE(result.errors.toStdString());
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_TRUE(result.output.startsWith(output) && result.output.isEmpty() == output.isEmpty());
        EXPECT_TRUE(result.errors.startsWith(errors) && result.errors.isEmpty() == errors.isEmpty());
    }
}

TEST_F(DataFiles, OutputThatCannotBeWrittenIsAFailure) {
    const Command commands[] = {{u"done"_s, {}, {}, {}, [](const CommandCall& call) {
                                     call.output << u"all is done"_s;
                                     return 0;
                                 }}};
    QFile full(u"/dev/full"_s);
    ASSERT_TRUE(full.open(QFile::WriteOnly | QFile::Unbuffered));
    QTextStream output(&full);
    QString told;
    QTextStream errors(&told);
    EXPECT_EQ(runCommand(commands, {u"done"_s}, output, errors), 1);
    EXPECT_EQ(told, u"Chyba: Výpis nelze zapsat. Příkaz sám skončil s kódem 0.\n"_s);
}
