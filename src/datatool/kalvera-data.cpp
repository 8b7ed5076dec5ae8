// kalvera-data: creates pairs of data files, imports old ones, looks after them, and loads and exports films.

#include <QCoreApplication>
#include <QDir>
#include <cstdio>

#include "datatool/Backup.h"
#include "datatool/CommandLine.h"
#include "datatool/DataFiles.h"
#include "datatool/FilmExport.h"
#include "datatool/FilmLoader.h"
#include "datatool/Importer.h"
#include "datatool/Interruption.h"
#include "datatool/careCommands.h"
#include "datatool/tableHeadings.h"

using namespace Qt::StringLiterals;

namespace {

// Films that a report names on the screen; `load.txt` names all.
constexpr qsizetype linesShown = 50;

int create(const CommandCall& call) {
    const QString& folder = call.operands[0];
    dataFiles::create(folder);
    call.output << u"Vytvořeno: %1, %2\n"_s.arg(dataFiles::cataloguePath(folder),
                                                dataFiles::picturesPath(folder));
    return 0;
}

int load(const CommandCall& call) {
    const filmLoader::Options options{.ignoreUnknown = call.has(u"--ignore-unknown"_s),
                                      .addGenres = call.has(u"--add-genres"_s),
                                      .skipKnown = call.has(u"--skip-known"_s),
                                      .dryRun = call.has(u"--dry-run"_s)};
    ProgressBar bar(call.errors);
    const LoadReport report = filmLoader::load(call.operands[0], call.operands[1], options, bar.function());
    bar.clear();
    call.output << report.text(linesShown);
    return report.agrees() ? 0 : exitDifference;
}

int exportFilms(const CommandCall& call) {
    ProgressBar bar(call.errors);
    const auto write = call.has(u"--pictures"_s) ? &filmExport::writeWithPictures : &filmExport::write;
    const filmExport::Report report = write(call.operands[0], call.operands[1], bar.function());
    bar.clear();
    call.output << u"Zapsáno filmů: %1\n"_s.arg(report.films);
    if (report.pictures > 0) call.output << u"Zapsáno obrázků: %1\n"_s.arg(report.pictures);
    if (report.missing.isEmpty()) return 0;
    call.output << u"\nPOZOR, chybí obrázky:\n- "_s << report.missing.join(u"\n- "_s) << u'\n';
    return exitDifference;
}

int importPair(const CommandCall& call) {
    ProgressBar bar(call.errors);
    const ImportReport report =
        importer::run(call.operands[0], call.operands[1], OldPrograms::find(), bar.function());
    bar.clear();
    call.output << report.text();
    return report.agrees() ? 0 : exitDifference;
}

QString notesOnTables() {
    return u"První řádek tabulky jmenuje sloupce, z nich aspoň název nebo číslo. Známé nadpisy:\n"_s +
           tableHeadings::known() +
           u"Velikost písmen, háčky a čárky nerozhodují. Další pravidla popisuje man kalvera-data.\n"_s;
}

QString notesOnBackups() {
    return u"KAM je složka, v níž záloha vznikne jako složka s datem a časem v názvu. Bez KAM je to "
           "složka\nZálohy Kalvéra v dokumentech: %1\nBez SLOŽKY se zálohuje katalog, který by otevřel "
           "program.\n"_s.arg(QDir::toNativeSeparators(backup::defaultTarget()));
}

const QString folderNote =
    u"SLOŽKA je složka se soubory data.ddb a pictures.ddb; bez ní jde o katalog,\nkterý by otevřel program.\n"_s;

QString notesOnCheck() {
    return folderNote;
}

QString notesOnRepair() {
    return folderNote +
           u"Program musí být zavřený. Z poškozených souborů se zachrání, co se dá přečíst,\n"
           "a dosavadní se odloží do složky „Odloženo“ s datem a časem.\n"_s;
}

QString notesOnRestore() {
    return u"ZÁLOHA je složka, ve které jsou oba soubory katalogu, třeba\n„Zálohy Kalvéra/2026-11-25 1830“.\n"_s +
           folderNote + u"Program musí být zavřený.\n"_s;
}

const Command commands[] = {
    {u"create"_s, u"SLOŽKA"_s, u"vytvoří prázdné soubory data.ddb a pictures.ddb"_s, {}, create},
    {u"load"_s,
     u"SLOŽKA FILMY.csv"_s,
     u"přidá do katalogu filmy z tabulky nebo ze složky, kterou zapsal export --pictures"_s,
     {{u"--ignore-unknown"_s, {}, u"vynechá sloupce, které program nezná"_s},
      {u"--add-genres"_s, {}, u"přidá do číselníku žánry, které v něm chybějí"_s},
      {u"--skip-known"_s, {}, u"vynechá filmy, které už v katalogu jsou nebo se v tabulce opakují"_s},
      {u"--dry-run"_s, {}, u"jen ukáže, co by se stalo, a nic nezapíše"_s}},
     load,
     notesOnTables},
    {u"export"_s,
     u"SLOŽKA CÍL"_s,
     u"zapíše filmy z katalogu do nového souboru CSV"_s,
     {{u"--pictures"_s, {}, u"CÍL bude nová složka s tabulkou films.csv a s obrázky"_s}},
     exportFilms},
    {u"import"_s,
     u"STARÁ NOVÁ"_s,
     u"převede starou dvojici souborů ze složky STARÁ do složky NOVÁ"_s,
     {},
     importPair},
    {u"check"_s, u"[SLOŽKA]"_s, u"zkontroluje katalog a nic nemění"_s, {}, checkPair, notesOnCheck},
    {u"repair"_s,
     u"[SLOŽKA]"_s,
     u"zálohuje katalog a opraví, co lze bez dohadů"_s,
     {},
     repairPair,
     notesOnRepair},
    {u"backup"_s,
     u"[SLOŽKA [KAM]]"_s,
     u"zálohuje katalog, i když s ním program právě pracuje"_s,
     {{u"--keep"_s, u"N"_s, u"nechá jen N nejnovějších záloh"_s},
      {u"--desktop"_s, {}, u"výsledek oznámí na ploše"_s}},
     backUpPair,
     notesOnBackups},
    {u"restore"_s,
     u"ZÁLOHA [SLOŽKA]"_s,
     u"vrátí katalog ze zálohy a dosavadní odloží"_s,
     {},
     restorePair,
     notesOnRestore}};

}  // namespace

int main(int argc, char** argv) {
    // What the engine says in English is told in Czech by the failure that follows.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
        if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(message));
    });
    const QCoreApplication application(argc, argv);
    QTextStream output(stdout);
    QTextStream errors(stderr);
    interruption::watch();
    return runCommand(commands, QCoreApplication::arguments().mid(1), output, errors);
}
