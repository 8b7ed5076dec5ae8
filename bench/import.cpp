// Time and memory to import an old pair, beside what mdbtools alone needs to export the same tables and a
// plain, synced write of as many bytes as the new pair has. The first argument names the folder of the old
// pair; the small one of the tests serves without it, but there most of the time goes into starting the
// programs.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include "ratios.h"

using namespace Qt::StringLiterals;

namespace {

QString oldFolder = QStringLiteral(KALVERA_OLD_PAIR);

QString newFolder() {
    static const QTemporaryDir folder;
    return folder.filePath(u"new"_s);
}

void run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0) std::abort();
}

void exportTable(const QString& file, const QString& table) {
    run(u"mdb-export"_s, {u"-D"_s, u"%Y-%m-%d %H:%M:%S"_s, u"-T"_s, u"%Y-%m-%d %H:%M:%S"_s, u"-b"_s, u"raw"_s,
                          oldFolder + u'/' + file, table});
}

void exportByMdbtools(benchmark::State& state) {
    for (auto _ : state) {
        for (const QString& table : {u"tDVD"_s, u"tZanr"_s, u"tOddeleni"_s, u"tUser"_s, u"tPujcky"_s})
            exportTable(u"data.ddb"_s, table);
        exportTable(u"pictures.ddb"_s, u"tPicture"_s);
    }
}

/// Imports, and gives the highest memory of the process in kB.
long importPair() {
    QDir(newFolder()).removeRecursively();
    const QByteArray from = oldFolder.toLocal8Bit();
    const QByteArray to = newFolder().toLocal8Bit();
    const pid_t child = fork();
    if (child == 0) {
        if (freopen("/dev/null", "w", stdout) == nullptr) _exit(1);
        execl(KALVERA_DATA, KALVERA_DATA, "import", from.constData(), to.constData(), nullptr);
        _exit(1);
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || status != 0) std::abort();
    return usage.ru_maxrss;
}

void import(benchmark::State& state) {
    for (auto _ : state)
        state.counters["highest_kB"] = static_cast<double>(importPair());
}

/// As many bytes as the new pair has.
void writePlainly(benchmark::State& state) {
    importPair();
    const qint64 length =
        QFileInfo(newFolder() + u"/data.ddb"_s).size() + QFileInfo(newFolder() + u"/pictures.ddb"_s).size();
    const QByteArray bytes(length, 'x');
    for (auto _ : state) {
        QFile file(newFolder() + u"/plain"_s);
        if (!file.open(QFile::WriteOnly) || file.write(bytes) != length || !file.flush()) std::abort();
        fsync(file.handle());
        file.remove();
    }
}

BENCHMARK(exportByMdbtools)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);
BENCHMARK(writePlainly)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);
BENCHMARK(import)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5);

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc > 1) oldFolder = QString::fromLocal8Bit(argv[1]);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    const double exported = ratios.ratio("import", "exportByMdbtools");
    const double written = ratios.ratio("import", "writePlainly");
    // import / (export + write)
    QTextStream(stdout) << "Import / (export by mdbtools + plain write): " << 1 / (1 / exported + 1 / written)
                        << "  (at most 1.5)\nHighest memory, kB: " << ratios.counter("highest_kB") << '\n';
    return 0;
}
