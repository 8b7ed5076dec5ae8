// What the main window's list costs, in time and memory, with 100,000 films and 1,000 open loans, each beside
// its yardstick in the same run. The ratios are printed at the end.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <map>

#include "DataFiles.h"
#include "catalogue/frmMaster.h"
#include "core/mDatabase.h"
#include "platform/paths.h"
#include "platform/sqlite.h"
#include "support/ScriptedOutside.h"
#include "toolkit/Application.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int openLoans = 1000;
constexpr int manyFilms = 100000;
constexpr int fewFilms = 1000;

/// A catalogue of `films` films with titles in no order, and the open loans of the first thousand.
class Catalogue {
 public:
    explicit Catalogue(int films) {
        dataFiles::create(folder_.filePath(u"data"_s));
        const sqlite::Database database(path(), sqlite::Database::Mode::readWrite);
        sqlite::Transaction transaction(database);
        database.exec(
            ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" +
             QByteArray::number(films) +
             ") INSERT INTO tDVD (KatCisl, CZJm, PuvJm, Zanr, DiskPocet, Obsah, Jazyk, Stat, Rezie, Delka, "
             "Rok, Herci, Obal_ID, Nahled_ID) SELECT i, substr('ŽCŘAČHŠKL', (i*7)%9+1, 1) || 'esta ' || "
             "((i*7919)%100003) || ' za štěstím', 'The Way to Happiness ' || i, 'Drama, Komedie', 1, "
             "'Příběh o jedné cestě, na které se potkají ti, kdo se nehledali.', i%3, 'USA', "
             "'Jan Novák', '118', '1998', 'A. B., C. D., E. F.', 0, 0 FROM n LIMIT " +
             QByteArray::number(films))
                .constData());
        database.exec("INSERT INTO tUser (USNAME) SELECT 'Zákazník ' || DVDID FROM tDVD LIMIT 500");
        database.exec(("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) SELECT DVDID%500+1, DVDID, "
                       "'2026-02-03 10:20:30' FROM tDVD LIMIT " +
                       QByteArray::number(openLoans))
                          .constData());
        transaction.commit();
    }

    QString path() const { return folder_.filePath(u"data/data.ddb"_s); }

 private:
    QTemporaryDir folder_;
};

/// The window over one of the catalogues; made once, as all runs share it.
frmMaster& windowOver(int films) {
    static std::map<int, std::unique_ptr<Catalogue>> catalogues;
    static std::map<int, std::unique_ptr<frmMaster>> windows;
    auto& catalogue = catalogues[films];
    if (catalogue == nullptr) catalogue = std::make_unique<Catalogue>(films);
    ActDBPath = catalogue->path();
    auto& window = windows[films];
    if (window == nullptr) {
        window = std::make_unique<frmMaster>();
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
    const Catalogue empty(0);
    for (auto _ : state) {
        ActDBPath = empty.path();
        frmMaster window;
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

/// Keeps the best time of each benchmark for the ratios.
class Best final : public benchmark::ConsoleReporter {
 public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            double& best = times.try_emplace(run.benchmark_name(), 1e300).first->second;
            best = std::min(best, run.GetAdjustedRealTime());
            if (run.counters.contains("bytes_per_film")) bytesPerFilm = run.counters.at("bytes_per_film");
        }
        ConsoleReporter::ReportRuns(runs);
    }

    std::map<std::string, double> times;
    double bytesPerFilm = 0;
};

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const ScriptedOutside outside;
    const QTemporaryDir folder;
    paths::setProgramFolder(folder.path());
    benchmark::Initialize(&argc, argv);
    Best best;
    benchmark::RunSpecifiedBenchmarks(&best);
    QTextStream out(stdout);
    out << "NactiSeznam / bare queries: " << best.times["nactiSeznam"] / best.times["bareQueries"]
        << "  (at most 1.5)\n"
        << "ObnovZaznam, 100,000 / 1,000 films: "
        << best.times["obnovZaznam/100000"] / best.times["obnovZaznam/1000"] << "  (at most 2)\n"
        << "Bytes per film: " << best.bytesPerFilm << "  (at most 1024)\n";
    return 0;
}
