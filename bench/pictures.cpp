// Time and memory to store a picture of 50 MB and take it out again, beside two copies of the same file
// with a sync to disk; and the editor opened on a film with two pictures, in a small and a large catalogue.

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QImage>
#include <QRandomGenerator>
#include <QTextStream>
#include <memory>

#include "benchCatalogue.h"
#include "film/frmDVD.h"
#include "film/mObrazky.h"
#include "platform/sqlite.h"
#include "ratios.h"
#include "support/ScriptedOutside.h"
#include "toolkit/Application.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int bigPicture = 50 * 1000 * 1000;
constexpr int fewFilms = 10;
constexpr int manyFilms = 100000;

QByteArray noise(int length) {
    QByteArray bytes(length, Qt::Uninitialized);
    QRandomGenerator::global()->fillRange(reinterpret_cast<quint32*>(bytes.data()), length / 4);
    return bytes;
}

void copySynced(const QString& from, const QString& to) {
    QFile source(from);
    QFile target(to);
    if (!source.open(QFile::ReadOnly) || !target.open(QFile::WriteOnly | QFile::Truncate)) std::abort();
    for (QByteArray piece = source.read(100000); !piece.isEmpty(); piece = source.read(100000))
        target.write(piece);
    target.flush();
    fsync(target.handle());
}

/// Highest memory of the process since `resetPeak`, in kB.
qint64 peakMemory() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QFile::ReadOnly)) return 0;
    for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine()) {
        if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toLongLong();
    }
    return 0;
}

void resetPeak() {
    QFile references(u"/proc/self/clear_refs"_s);
    if (references.open(QFile::WriteOnly)) references.write("5");
}

const QString& bigFile(const BenchCatalogue& catalogue) {
    static const QString path = [&catalogue] {
        QFile file(catalogue.folder() + u"/big.jpg"_s);
        if (!file.open(QFile::WriteOnly) || file.write(noise(bigPicture)) != bigPicture) std::abort();
        return file.fileName();
    }();
    return path;
}

const BenchCatalogue& smallCatalogue() {
    static const BenchCatalogue catalogue(fewFilms, 0);
    catalogue.use();
    return catalogue;
}

void copyTwice(benchmark::State& state) {
    const QString& file = bigFile(smallCatalogue());
    for (auto _ : state) {
        copySynced(file, file + u".one"_s);
        copySynced(file + u".one"_s, file + u".two"_s);
    }
}

void storeAndTakeOut(benchmark::State& state) {
    const QString& file = bigFile(smallCatalogue());
    qint32 film = 100;
    for (auto _ : state) {
        resetPeak();
        const qint64 before = peakMemory();
        const qint32 id = UlozObal(++film, file);
        ZobrazObal(id);
        state.counters["grown_kB"] = static_cast<double>(peakMemory() - before);
    }
}

/// A photograph of about 500 kB.
void makePhotograph(const QString& path) {
    QImage image(800, 600, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = QRandomGenerator::global()->generate() | 0xFF000000U;
    }
    image.save(path, "JPG", 75);
}

void openEditor(benchmark::State& state) {
    static std::map<int, std::unique_ptr<BenchCatalogue>> catalogues;
    const int films = static_cast<int>(state.range(0));
    auto& catalogue = catalogues[films];
    if (catalogue == nullptr) {
        catalogue = std::make_unique<BenchCatalogue>(films, 0, films == manyFilms ? 10000 : 0);
        catalogue->use();
        const QString photograph = catalogue->folder() + u"/photograph.jpg"_s;
        makePhotograph(photograph);
        const qint32 cover = UlozObal(1, photograph);
        const qint32 preview = UlozNahled(1, photograph);
        sqlite::Database(catalogue->path(), sqlite::Database::Mode::readWrite)
            .exec(("UPDATE tDVD SET Obal_ID=" + QByteArray::number(cover) +
                   ", Nahled_ID=" + QByteArray::number(preview) + " WHERE DVDID=1")
                      .constData());
    }
    catalogue->use();
    for (auto _ : state) {
        frmDVD editor(Sites{});
        editor.Inicializuj(1);
        editor.show();
        QCoreApplication::processEvents();
    }
}

BENCHMARK(copyTwice)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(storeAndTakeOut)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(openEditor)->Arg(fewFilms)->Arg(manyFilms)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const ScriptedOutside outside;
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    QTextStream(stdout) << "50 MB in and out / two synced copies: "
                        << ratios.ratio("storeAndTakeOut", "copyTwice")
                        << "  (at most 3)\nMemory grown meanwhile, kB: " << ratios.counter("grown_kB")
                        << "  (at most 5000)\nEditor, 100,000 / 10 films: "
                        << ratios.ratio("openEditor100000", "openEditor10") << "  (at most 2)\n";
    return 0;
}
