#include "datatool/Restore.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <algorithm>

#include "core/pairReplacement.h"
#include "datatool/Backup.h"
#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/NewFolder.h"
#include "datatool/outputFile.h"

using namespace Qt::StringLiterals;

namespace {

/// The newest backup in a folder that `kalvera-data backup` fills; "" without one.
QString newestIn(const QString& folder) {
    QStringList names = QDir(folder).entryList({u"*-*-* *"_s}, QDir::Dirs);
    QCollator byCounter;
    byCounter.setNumericMode(true);
    std::sort(names.begin(), names.end(), byCounter);
    while (!names.isEmpty() &&
           !QFileInfo::exists(dataFiles::cataloguePath(QDir(folder).filePath(names.last()))))
        names.removeLast();
    return names.isEmpty() ? QString() : QDir(folder).filePath(names.last());
}

/// Refuses a folder without a pair, and names the backup that may have been meant.
void refuseNoBackup(const QString& folder) {
    dataFiles::refuseFile(folder);
    const QString catalogue = dataFiles::cataloguePath(folder);
    if (!QFileInfo(folder).isDir()) outputFile::fail(u"Složka se zálohou neexistuje"_s, folder);
    if (QFileInfo::exists(catalogue) || !QFileInfo(folder).isExecutable()) return;
    const QString newest = newestIn(folder);
    if (!newest.isEmpty()) {
        outputFile::fail(u"Zálohy jsou až ve složkách s datem a časem, uveďte jednu z nich; nejnovější je"_s,
                         newest);
    }
    outputFile::fail(u"Záloha je složka, ve které jsou oba soubory katalogu; tady chybí"_s, catalogue);
}

QStringList notesOnLinks(const QString& folder) {
    QStringList notes;
    for (const QString& path : {dataFiles::cataloguePath(folder), dataFiles::picturesPath(folder)}) {
        const QFileInfo file(path);
        if (!file.isSymLink()) continue;
        notes += u"%1 byl odkaz na %2, teď je to obyčejný soubor; %3."_s.arg(
            file.fileName(), QDir::toNativeSeparators(file.symLinkTarget()),
            file.exists() ? u"soubor, na který odkaz vedl, se nezměnil"_s
                          : u"soubor, na který odkaz vedl, není dostupný"_s);
    }
    return notes;
}

}  // namespace

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
    refuseNoBackup(backup);
    NewFolder made(folder);
    const FolderLock lock(folder);
    refuseTaken(lock, folder);
    Report report{QDir(folder).absolutePath(), {}, {}};
    const auto undo = qScopeGuard([&folder] { pairReplacement::giveUp(folder); });
    report.notes = backup::copyPair(backup, pairReplacement::makeRoom(folder), progress);
    interruption::check();
    const auto held = holdPair(report.folder);
    report.notes += notesOnLinks(report.folder);
    const QString aside = asideFolder(report.folder, now);
    if (pairReplacement::replace(report.folder, aside)) report.aside = aside;
    made.keep();
    return report;
}
