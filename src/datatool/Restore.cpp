#include "datatool/Restore.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

#include "core/pairReplacement.h"
#include "datatool/Backup.h"
#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/NewFolder.h"
#include "datatool/outputFile.h"

using namespace Qt::StringLiterals;

QString restore::Report::text() const {
    QStringList lines = notes;
    lines += u"Katalog ze zálohy je na místě: %1"_s.arg(QDir::toNativeSeparators(folder));
    if (!aside.isEmpty())
        lines += u"Dosavadní soubory jsou odložené ve složce %1"_s.arg(QDir::toNativeSeparators(aside));
    return lines.join(u'\n') + u'\n';
}

void restore::refuseTaken(const FolderLock& lock, const QString& folder) {
    if (!lock.isTaken()) return;
    const QString holder = lock.holder().isEmpty() ? u"jiný uživatel"_s : lock.holder();
    outputFile::fail(u"S daty právě pracuje program (spustil ho %1), nejdřív ho zavřete"_s.arg(holder),
                     folder);
}

std::vector<sqlite::Database> restore::holdPair(const QString& folder) {
    std::vector<sqlite::Database> held;
    for (const auto open : {&dataFiles::openCatalogue, &dataFiles::openPictures}) {
        try {
            held.push_back(open(folder));
        } catch (const sqlite::Failure& failure) {
            // Whoever writes a lot locks even readers out.
            if ((failure.resultCode() & 0xFF) == SQLITE_BUSY) throw;
            continue;  // nobody can be writing to it
        } catch (const RuntimeError&) {
            continue;
        }
        held.back().exec("BEGIN IMMEDIATE");
    }
    return held;
}

QString restore::asideFolder(const QString& folder, const QDateTime& now) {
    return QDir(folder).filePath(backup::freeName(folder, u"Odloženo "_s, now));
}

restore::Report restore::run(const QString& backup, const QString& folder, const QDateTime& now,
                             const Progress& progress) {
    const QString same = QFileInfo(folder).canonicalFilePath();
    if (!same.isEmpty() && same == QFileInfo(backup).canonicalFilePath())
        outputFile::fail(u"Záloha a cíl jsou tatáž složka"_s, backup);
    NewFolder made(folder);
    const FolderLock lock(folder);
    refuseTaken(lock, folder);
    Report report{QDir(folder).absolutePath(), {}, {}};
    {
        auto undo = qScopeGuard([&folder] { pairReplacement::makeRoom(folder); });
        report.notes = backup::copyPair(backup, pairReplacement::makeRoom(folder), progress);
        interruption::check();
        undo.dismiss();
    }
    const auto held = holdPair(report.folder);
    const QString aside = asideFolder(report.folder, now);
    if (pairReplacement::replace(report.folder, aside)) report.aside = aside;
    made.keep();
    return report;
}
