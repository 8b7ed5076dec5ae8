// What the main window's list costs, in time and memory, with 100,000 films and 1,000 open loans, each beside
// its yardstick in the same run. The ratios are printed at the end.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <map>

#include "benchCatalogue.h"
#include "catalogue/frmMaster.h"
#include "core/mDatabase.h"
#include "platform/paths.h"
#include "platform/sqlite.h"
#include "ratios.h"
#include "support/ScriptedOutside.h"
#include "toolkit/Application.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int openLoans = 1000;
constexpr int manyFilms = 100000;
constexpr int fewFilms = 1000;

/// The window over one of the catalogues; made once, as all runs share it.
frmMaster& windowOver(int films) {
    static std::map<int, std::unique_ptr<BenchCatalogue>> catalogues;
    // Never destroyed: the application object has gone before static ones.
    static auto& windows = *new std::map<int, std::unique_ptr<frmMaster>>;
    auto& catalogue = catalogues[films];
    if (catalogue == nullptr) catalogue = std::make_unique<BenchCatalogue>(films, openLoans);
    ActDBPath = catalogue->path();
    auto& window = windows[films];
    if (window == nullptr) {
        window = std::make_unique<frmMaster>(Sites{});
        window->show();
        QCoreApplication::processEvents();
    }
    return *window;
}

void readBare(const sqlite::Database& database, const char* sql, const QStringList& shown) {
    const sqlite::Statement statement(database, sql);
    std::vector<int> places;
    for (const QString& name : shown) {
        for (int at = 0; at < sqlite3_column_count(statement.handle()); ++at) {
            if (name == QString::fromUtf8(sqlite3_column_name(statement.handle(), at))) places.push_back(at);
        }
    }
    while (statement.step()) {
        for (const int place : places) {
            QString text = statement.text(place);
            benchmark::DoNotOptimize(text);
        }
    }
}

void bareQueries(benchmark::State& state) {
    windowOver(manyFilms);
    for (auto _ : state) {
        const sqlite::Database database(ActDBPath, sqlite::Database::Mode::readWrite);
        readBare(database, "SELECT * from tDVD Order by CZJM",
                 {u"KatCisl"_s, u"CZJm"_s, u"Zanr"_s, u"PuvJm"_s, u"Jazyk"_s});
        readBare(database,
                 "SELECT tDVD.DVDID, tPujcky.P_UID, tPujcky.P_DVDID, tPujcky.PDatPujcky,tPujcky.PDatVraceni, "
                 "tUser.USID, tUser.USNAME FROM tUser INNER JOIN (tDVD INNER JOIN tPujcky ON tDVD.DVDID = "
                 "tPujcky.P_DVDID) ON tUser.USID = tPujcky.P_UID WHERE (((tPujcky.PDatVraceni) Is Null));",
                 {u"USNAME"_s, u"PDatPujcky"_s});
    }
}

void nactiSeznam(benchmark::State& state) {
    frmMaster& window = windowOver(manyFilms);
    for (auto _ : state)
        window.NactiSeznam(u"CZJM"_s);
}

void obnovZaznam(benchmark::State& state) {
    frmMaster& window = windowOver(static_cast<int>(state.range(0)));
    const auto film = static_cast<qint32>(state.range(0) / 2);
    for (auto _ : state)
        window.ObnovZaznam(film);
}

std::size_t memoryInUse() {
    return mallinfo2().uordblks + mallinfo2().hblkhd;
}

/// What the filled list holds beyond an empty one, its memory counted from the first fill on.
void memoryOfTheList(benchmark::State& state) {
    windowOver(manyFilms);
    const QString full = ActDBPath;
    const BenchCatalogue empty(0, 0);
    for (auto _ : state) {
        ActDBPath = empty.path();
        frmMaster window(Sites{});
        window.show();
        QCoreApplication::processEvents();
        const std::size_t before = memoryInUse();
        ActDBPath = full;
        window.NactiSeznam(u"CZJM"_s);
        QCoreApplication::processEvents();
        state.counters["bytes_per_film"] = static_cast<double>(memoryInUse() - before) / manyFilms;
    }
}

BENCHMARK(bareQueries)->Unit(benchmark::kMillisecond);
BENCHMARK(nactiSeznam)->Unit(benchmark::kMillisecond);
BENCHMARK(obnovZaznam)->Arg(fewFilms)->Arg(manyFilms)->Unit(benchmark::kMillisecond);
BENCHMARK(memoryOfTheList)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const ScriptedOutside outside;
    const QTemporaryDir folder;
    paths::setProgramFolder(folder.path());
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    QTextStream(stdout) << "NactiSeznam / bare queries: " << ratios.ratio("nactiSeznam", "bareQueries")
                        << "  (at most 1.5)\nObnovZaznam, 100,000 / 1,000 films: "
                        << ratios.ratio("obnovZaznam100000", "obnovZaznam1000")
                        << "  (at most 2)\nBytes per film: " << ratios.counter("bytes_per_film")
                        << "  (at most 1024)\n";
    return 0;
}
