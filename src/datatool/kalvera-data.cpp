// kalvera-data: creates pairs of data files, imports old ones, and loads and exports films as CSV.

#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

#include "datatool/DataFiles.h"
#include "datatool/FilmExport.h"
#include "datatool/FilmLoader.h"
#include "datatool/Importer.h"
#include "datatool/Interruption.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

// 1 is a failure that changed nothing.
constexpr int exitUsage = 2;
constexpr int exitDifference = 3;

/// A terminal line that is overwritten; nothing if standard error is no terminal.
class Progress final {
 public:
    explicit Progress(QTextStream& errors) : errors_(errors), shown_(onTerminal()) {}
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(const QString& text) const { put(text); }
    void clear() const { put({}); }

 private:
    static bool onTerminal() {
#ifdef Q_OS_WIN
        return _isatty(_fileno(stderr)) != 0;
#else
        return isatty(STDERR_FILENO) != 0;
#endif
    }
    void put(const QString& text) const {
        if (!shown_) return;
        errors_ << u'\r' << text.leftJustified(width) << u'\r';
        errors_.flush();
    }

    static constexpr int width = 60;
    QTextStream& errors_;
    bool shown_;
};

int usage(QTextStream& errors) {
    errors
        << u"Použití:\n"
           "  kalvera-data create SLOŽKA             vytvoří prázdné soubory data.ddb a pictures.ddb\n"
           "  kalvera-data load SLOŽKA FILMY.csv     přidá do katalogu filmy ze souboru\n"
           "  kalvera-data export SLOŽKA FILMY.csv   zapíše filmy z katalogu do nového souboru\n"
           "  kalvera-data import STARÁ NOVÁ         převede starou dvojici souborů ze složky STARÁ do složky NOVÁ\n"_s;
    return exitUsage;
}

void create(const QString& folder, QTextStream& output) {
    dataFiles::create(folder);
    output << u"Vytvořeno: %1, %2\n"_s.arg(dataFiles::cataloguePath(folder), dataFiles::picturesPath(folder));
}

/// @return the exit code, as in the next functions.
int load(const QString& folder, const QString& csv, QTextStream& output, QTextStream& errors) {
    const Progress progress(errors);
    const filmLoader::Report report = filmLoader::load(
        folder, csv, [&progress](qint64 done) { progress.show(u"Načteno filmů: %1"_s.arg(done)); });
    progress.clear();
    output << report.text();
    return report.agrees() ? 0 : exitDifference;
}

int exportFilms(const QString& folder, const QString& csv, QTextStream& output, QTextStream& errors) {
    const Progress progress(errors);
    const qint64 films = filmExport::write(
        folder, csv, [&progress](qint64 done) { progress.show(u"Zapsáno filmů: %1"_s.arg(done)); });
    progress.clear();
    output << u"Zapsáno filmů: %1\n"_s.arg(films);
    return 0;
}

int importPair(const QString& oldFolder, const QString& newFolder, QTextStream& output, QTextStream& errors) {
    const Progress progress(errors);
    const ImportReport report =
        importer::run(oldFolder, newFolder, OldPrograms::find(),
                      [&progress](const QString& title, qint64 done, qint64 all) {
                          progress.show(u"%1: %2 z %3"_s.arg(title).arg(done).arg(all));
                      });
    progress.clear();
    output << report.text();
    return report.agrees() ? 0 : exitDifference;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream output(stdout);
    QTextStream errors(stderr);
    interruption::watch();
    try {
        if (arguments.size() == 3 && arguments[1] == u"create"_s) {
            create(arguments[2], output);
        } else if (arguments.size() == 4 && arguments[1] == u"load"_s) {
            return load(arguments[2], arguments[3], output, errors);
        } else if (arguments.size() == 4 && arguments[1] == u"export"_s) {
            return exportFilms(arguments[2], arguments[3], output, errors);
        } else if (arguments.size() == 4 && arguments[1] == u"import"_s) {
            return importPair(arguments[2], arguments[3], output, errors);
        } else {
            return usage(errors);
        }
        return 0;
    } catch (const RuntimeError& failure) {
        errors << u"Chyba: "_s << failure.description() << Qt::endl;
        return 1;
    }
}
