// Film lists: a simple one of 100,000 films and a detailed one with 2,000 previews of 30 kB, beside reading
// and writing the same bare; and the memory that the simple one takes.

#include <malloc.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <map>
#include <memory>

#include "benchCatalogue.h"
#include "platform/files.h"
#include "platform/sqlite.h"
#include "printing/filmLists.h"
#include "printing/mPrintHTM.h"
#include "ratios.h"
#include "support/ScriptedOutside.h"

using namespace Qt::StringLiterals;
using filmLists::Kind;

namespace {

constexpr int manyFilms = 100000;
constexpr int fewFilms = 10000;
constexpr int previews = 2000;
constexpr int previewSize = 30000;

const QString byTitle = u"SELECT * from tDVD ORDER BY CZJM"_s;

const BenchCatalogue& catalogueOf(int films) {
    static std::map<int, std::unique_ptr<BenchCatalogue>> catalogues;
    auto& catalogue = catalogues[films];
    if (catalogue == nullptr) catalogue = std::make_unique<BenchCatalogue>(films, 0);
    catalogue->use();
    return *catalogue;
}

const BenchCatalogue& catalogueWithPreviews() {
    static const std::unique_ptr<BenchCatalogue> catalogue = [] {
        auto made = std::make_unique<BenchCatalogue>(previews, 0);
        const sqlite::Database store(made->picturesPath(), sqlite::Database::Mode::readWrite);
        const QByteArray count = QByteArray::number(previews);
        const QByteArray size = QByteArray::number(previewSize);
        store.exec(
            ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" + count +
             ") INSERT INTO tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) SELECT i, 'N', 'jpg', " +
             size + ", randomblob(" + size + "+1) FROM n")
                .constData());
        sqlite::Database(made->path(), sqlite::Database::Mode::readWrite)
            .exec("UPDATE tDVD SET Nahled_ID=DVDID");
        return made;
    }();
    catalogue->use();
    return *catalogue;
}

QString listPath(const BenchCatalogue& catalogue) {
    return catalogue.folder() + u"/data/test.htm"_s;
}

void yield() {
    QCoreApplication::processEvents();
}

/// Reads all columns of all films.
void readFilms(const BenchCatalogue& catalogue) {
    const sqlite::Database database(catalogue.path(), sqlite::Database::Mode::readWrite);
    const sqlite::Statement films(database, "SELECT * from tDVD ORDER BY CZJM");
    while (films.step()) {
        for (int column = 0; column < sqlite3_column_count(films.handle()); ++column) {
            QString text = films.text(column);
            benchmark::DoNotOptimize(text);
        }
    }
}

void writeBare(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size()) std::abort();
}

void bareQuery(benchmark::State& state) {
    const BenchCatalogue& catalogue = catalogueOf(static_cast<int>(state.range(0)));
    for (auto _ : state)
        readFilms(catalogue);
}

void simpleList(benchmark::State& state) {
    catalogueOf(static_cast<int>(state.range(0)));
    for (auto _ : state)
        filmLists::print(byTitle, Kind::simple, yield);
}

void bareSimple(benchmark::State& state) {
    const BenchCatalogue& catalogue = catalogueOf(static_cast<int>(state.range(0)));
    filmLists::print(byTitle, Kind::simple, yield);
    const QByteArray bytes(QFile(listPath(catalogue)).size(), 'x');
    for (auto _ : state) {
        readFilms(catalogue);
        writeBare(catalogue.folder() + u"/bare.htm"_s, bytes);
    }
}

/// Moves the pictures of an earlier run aside, so that each run writes new ones. They are not deleted, as
/// some file systems are slow to reuse the space of deleted files.
void putPicturesAway(benchmark::State& state, const BenchCatalogue& catalogue) {
    static int runs = 0;
    state.PauseTiming();
    const QString away = catalogue.folder() + u"/run%1"_s.arg(++runs);
    QDir().mkpath(away);
    for (const QString& folder : {catalogue.folder() + u"/data"_s, catalogue.folder()}) {
        for (const QFileInfo& file : QDir(folder).entryInfoList({u"*.jpg"_s}))
            QFile::rename(file.filePath(), away + u'/' + file.fileName());
    }
    state.ResumeTiming();
}

void detailedList(benchmark::State& state) {
    const BenchCatalogue& catalogue = catalogueWithPreviews();
    for (auto _ : state) {
        putPicturesAway(state, catalogue);
        filmLists::print(byTitle, Kind::detailed, yield);
    }
}

void bareDetailed(benchmark::State& state) {
    const BenchCatalogue& catalogue = catalogueWithPreviews();
    filmLists::print(byTitle, Kind::detailed, yield);
    const QByteArray bytes(QFile(listPath(catalogue)).size(), 'x');
    for (auto _ : state) {
        putPicturesAway(state, catalogue);
        readFilms(catalogue);
        // The program opens the picture file for each preview, so that it can be replaced at any time.
        for (int id = 1; id <= previews; ++id) {
            const sqlite::Database store(catalogue.picturesPath(), sqlite::Database::Mode::readWrite);
            const sqlite::Statement picture(
                store, "SELECT PicDat FROM tPicture WHERE PicID=" + QByteArray::number(id));
            if (!picture.step()) std::abort();
            writeBare(catalogue.folder() + u"/bare%1.jpg"_s.arg(id),
                      {static_cast<const char*>(sqlite3_column_blob(picture.handle(), 0)), previewSize});
        }
        writeBare(catalogue.folder() + u"/bare.htm"_s, bytes);
    }
}

qint64 memoryInUse() {
    const auto now = mallinfo2();
    return static_cast<qint64>(now.uordblks) + static_cast<qint64>(now.hblkhd);
}

/// The most memory taken while a list is made, in sizes of its file.
void memoryOfTheList(benchmark::State& state) {
    const BenchCatalogue& catalogue = catalogueOf(manyFilms);
    for (auto _ : state) {
        HtmlTelo = {};
        malloc_trim(0);
        const qint64 before = memoryInUse();
        qint64 most = 0;
        filmLists::print(byTitle, Kind::simple, [&] { most = std::max(most, memoryInUse() - before); });
        most = std::max(most, memoryInUse() - before);
        state.counters["memory"] =
            static_cast<double>(most) / static_cast<double>(QFile(listPath(catalogue)).size());
    }
}

BENCHMARK(bareQuery)->Arg(fewFilms)->Arg(manyFilms)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareSimple)->Arg(fewFilms)->Arg(manyFilms)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(simpleList)->Arg(fewFilms)->Arg(manyFilms)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareDetailed)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(detailedList)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(memoryOfTheList)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const ScriptedOutside outside;
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    QTextStream(stdout) << "Simple list of 100,000 films / reading and writing bare: "
                        << ratios.ratio("simpleList100000", "bareSimple100000")
                        << "  (at most 2)\nGrowth from 10,000 to 100,000 films, simple list / bare query: "
                        << ratios.ratio("simpleList100000", "simpleList10000") /
                               ratios.ratio("bareQuery100000", "bareQuery10000")
                        << "  (at most 1.1)\nDetailed list with 2,000 previews / bare: "
                        << ratios.ratio("detailedList", "bareDetailed")
                        << "  (at most 2)\nMemory / size of the file: " << ratios.counter("memory")
                        << "  (at most 3)\n";
    return 0;
}
