// kalvera-data: makes the ready-made pair of data files and fills the catalogue from a file.

#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

#include "DataFiles.h"
#include "FilmLoader.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

bool onTerminal() {
#ifdef Q_OS_WIN
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

int usage(QTextStream& errors) {
    errors << u"Použití:\n"
              "  kalvera-data create SLOŽKA             vytvoří prázdné soubory data.ddb a pictures.ddb\n"
              "  kalvera-data load SLOŽKA FILMY.csv     přidá do katalogu filmy ze souboru\n"_s;
    return 2;
}

void create(const QString& folder, QTextStream& output) {
    dataFiles::create(folder);
    output << u"Vytvořeno: %1, %2\n"_s.arg(dataFiles::cataloguePath(folder), dataFiles::picturesPath(folder));
}

void load(const QString& folder, const QString& csv, QTextStream& output, QTextStream& errors) {
    const bool shown = onTerminal();
    const qint64 films = filmLoader::load(folder, csv, [shown, &errors](qint64 done) {
        if (!shown) return;
        errors << u"\rNačteno filmů: %1"_s.arg(done);
        errors.flush();
    });
    if (shown) errors << u"\r"_s;
    errors.flush();
    output << u"Přidáno filmů: %1\n"_s.arg(films);
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream output(stdout);
    QTextStream errors(stderr);
    try {
        if (arguments.size() == 3 && arguments[1] == u"create"_s) {
            create(arguments[2], output);
        } else if (arguments.size() == 4 && arguments[1] == u"load"_s) {
            load(arguments[2], arguments[3], output, errors);
        } else {
            return usage(errors);
        }
        return 0;
    } catch (const RuntimeError& failure) {
        errors << u"Chyba: "_s << failure.description() << Qt::endl;
        return 1;
    }
}
