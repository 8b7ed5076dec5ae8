// Looking after 100,000 films with 2,000 covers of 50,000 bytes: a check beside a bare read of all rows of
// both files, and a backup beside a copy of both files that is brought to disk.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>

#include "benchCatalogue.h"
#include "datatool/Backup.h"
#include "datatool/Check.h"
#include "platform/files.h"
#include "platform/sqlite.h"
#include "ratios.h"

using namespace Qt::StringLiterals;

namespace {

const BenchCatalogue& catalogue() {
    static const BenchCatalogue made(100000, 1000, 2000);
    static const bool enlarged = [] {
        sqlite::Database(made.picturesPath(), sqlite::Database::Mode::readWrite)
            .exec("UPDATE tPicture SET PicSize=50000, PicDat=randomblob(50001)");
        return true;
    }();
    benchmark::DoNotOptimize(enlarged);
    return made;
}

QString data() {
    return catalogue().folder() + u"/data"_s;
}

void tellNothing(const QString& /*title*/, qint64 /*done*/, qint64 /*all*/) {}

void readRows(const QString& path) {
    const sqlite::Database database(path, sqlite::Database::Mode::readWrite);
    const sqlite::Statement tables(
        database, "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite%'");
    while (tables.step()) {
        const sqlite::Statement rows(database, "SELECT * FROM " + tables.text(0).toUtf8());
        while (rows.step()) {
            for (int column = 0; column < sqlite3_column_count(rows.handle()); ++column)
                benchmark::DoNotOptimize(sqlite3_column_blob(rows.handle(), column));
        }
    }
}

void readBare(benchmark::State& state) {
    for (auto _ : state) {
        readRows(catalogue().path());
        readRows(catalogue().picturesPath());
    }
}

void checkPair(benchmark::State& state) {
    for (auto _ : state) {
        if (!check::run(data(), tellNothing).isClean()) std::abort();
    }
}

void copySynced(benchmark::State& state) {
    const QString target = catalogue().folder() + u"/copy"_s;
    for (auto _ : state) {
        if (!QDir().mkpath(target)) std::abort();
        for (const QString& name : {u"/data.ddb"_s, u"/pictures.ddb"_s})
            files::copy(data() + name, target + name);
        QDir(target).removeRecursively();
    }
}

void backUp(benchmark::State& state) {
    for (auto _ : state)
        QDir(backup::run(data(), catalogue().folder(), 0, QDateTime::currentDateTime(), tellNothing).folder)
            .removeRecursively();
}

BENCHMARK(readBare)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);
BENCHMARK(checkPair)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);
BENCHMARK(copySynced)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);
BENCHMARK(backUp)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    QTextStream(stdout) << "Check of 100,000 films / bare read of all rows: "
                        << ratios.ratio("checkPair", "readBare") << "  (at most 3)\n"
                        << "Backup / copy of both files brought to disk: "
                        << ratios.ratio("backUp", "copySynced") << "  (at most 2)\n";
    return 0;
}
