#include "datatool/Backup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QStandardPaths>
#include <algorithm>
#include <future>
#include <memory>
#include <utility>

#include "datatool/Check.h"
#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/NewFolder.h"
#include "datatool/PairView.h"
#include "datatool/Sequences.h"
#include "datatool/outputFile.h"
#include "platform/FolderLock.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

namespace {

/// A backup that is not complete, or one about to be removed.
QString unfinished(const QString& target) {
    return QDir(target).filePath(u".kalvera-nedokonceno"_s);
}

/// Orders names of the same minute by their counter.
std::pair<QString, int> orderOf(const QString& name) {
    static const QRegularExpression form(u"^(\\d{4}-\\d{2}-\\d{2} \\d{4})(?: \\((\\d+)\\))?$"_s);
    const QRegularExpressionMatch match = form.match(name);
    return {match.captured(1), match.captured(2).toInt()};
}

bool isBackup(const QFileInfo& folder) {
    if (orderOf(folder.fileName()).first.isEmpty() || folder.isSymLink()) return false;
    const QStringList content =
        QDir(folder.filePath())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    return content == QStringList{u"data.ddb"_s, u"pictures.ddb"_s};
}

bool removeBackup(const QString& target, const QString& name) {
    // Renamed first, so that half of it is never taken for a backup.
    if (!QDir(target).rename(name, unfinished(target))) return false;
    if (QDir(unfinished(target)).removeRecursively()) return true;
    // Left under that name, it would be in the way of the next backup.
    QDir(target).rename(unfinished(target), name);
    return false;
}

/// Keeps `keep` backups, the one just made among them whatever its name says about its age.
void removeOldest(const QString& target, int keep, const QString& justMade, backup::Report& report) {
    QStringList names;
    const QFileInfoList folders = QDir(target).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QFileInfo& folder : folders) {
        if (isBackup(folder) && folder.fileName() != justMade) names += folder.fileName();
    }
    std::sort(names.begin(), names.end(),
              [](const QString& left, const QString& right) { return orderOf(left) < orderOf(right); });
    while (names.size() >= keep) {
        const QString name = names.takeFirst();
        (removeBackup(target, name) ? report.removed : report.stayed) += name;
    }
}

void syncFile(const QString& path) {
    QFile file(path);
    if (!file.open(QFile::ReadWrite) || !files::sync(file)) outputFile::failWriting(path);
}

void copyFile(const PairView::File& source, const QString& path, const Progress& progress) {
    const sqlite::Database copy(path, sqlite::Database::Mode::create);
    // A copy that fails is removed as a whole, and a complete one is synced once.
    copy.exec("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA cache_size=-500");
    try {
        source.database->copyInto(copy, [&](qint64 done, qint64 all) {
            interruption::check();
            progress(u"Kopírování souboru "_s + source.name(), done, all);
            files::startSync(path);
        });
    } catch (const sqlite::Failure& failure) {
        throw RuntimeError(failure.number(), u"%1 (kopírování souboru %2 do %3)"_s.arg(failure.description(),
                                                                                       source.path, path));
    }
}

/// As check::damageOf.
QString damageOfCopy(const QString& path, const Progress& progress) {
    PairView::File copy{path, path, {}};
    copy.database = std::make_unique<sqlite::Database>(path, sqlite::Database::Mode::readOnly);
    // Just written and nobody else's: reading it in place of copying its pages cannot fail.
    copy.database->exec("PRAGMA mmap_size=2147418112");
    return check::damageOf(copy, progress);
}

/// A film added between the copying of the catalogue and that of its picture left the picture alone in the
/// copy. No other film may inherit it.
void keepKeysOfPictures(const QString& catalogue, const QString& pictures) {
    const sqlite::Database copy(catalogue, sqlite::Database::Mode::readWrite);
    copy.exec("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF");
    copy.attach(pictures, u"pictures"_s);
    try {
        for (const sequences::Wrong& wrong : sequences::wrong(copy, u"tDVD"_s))
            sequences::mend(copy, wrong);
    } catch (const sqlite::Failure& failure) {
        // Of an index, as the rows have been checked.
        if ((failure.resultCode() & 0xFF) != SQLITE_CORRUPT) throw;
    }
}

}  // namespace

QString backup::Report::text() const {
    QStringList lines = notes;
    lines += u"Záloha je hotová a zkontrolovaná: %1"_s.arg(QDir::toNativeSeparators(folder));
    for (const QString& name : removed)
        lines += u"Odstraněna starší záloha %1"_s.arg(name);
    for (const QString& name : stayed)
        lines += u"POZOR, starší zálohu nelze odstranit: %1"_s.arg(name);
    return lines.join(u'\n') + u'\n';
}

QString backup::defaultTarget() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
        .filePath(u"Zálohy Kalvéra"_s);
}

QString backup::freeName(const QString& parent, const QString& prefix, const QDateTime& now) {
    const QString moment = now.toString(u"yyyy-MM-dd HHmm"_s);
    // Above the highest counter: a name that is free again would look older than the ones after it.
    int highest = 0;
    for (const QString& name :
         QDir(parent).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        if (!name.startsWith(prefix + moment)) continue;
        highest = std::max({highest, 1, orderOf(name.sliced(prefix.size())).second});
    }
    return prefix + (highest == 0 ? moment : u"%1 (%2)"_s.arg(moment).arg(highest + 1));
}

QStringList backup::copyPair(const QString& from, const QString& to, const Progress& progress) {
    if (!QDir().mkpath(to)) outputFile::fail(u"Složku nelze vytvořit"_s, to);
    QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const PairView source(from);
    const QString catalogue = dataFiles::cataloguePath(to);
    const QString pictures = dataFiles::picturesPath(to);
    copyFile(source.files()[0], catalogue, progress);
    // The pictures are most of the bytes, and copying them leaves a processor free.
    std::future<QString> catalogueDamage = std::async(std::launch::async, [&catalogue] {
        return damageOfCopy(catalogue, [](const QString& /*title*/, qint64 /*done*/, qint64 /*all*/) {});
    });
    copyFile(source.files()[1], pictures, progress);
    const QString picturesDamage = damageOfCopy(pictures, progress);
    progress(u"Kontrola souboru "_s + source.files()[0].name(), 0, 0);
    QStringList damaged{catalogueDamage.get(), picturesDamage};
    damaged.removeAll(QString());
    if (!damaged.isEmpty()) {
        throw RuntimeError(errors::database, u"%1 Zkuste kalvera-data repair. Složka: %2"_s.arg(
                                                 damaged.join(u' '), QDir::toNativeSeparators(from)));
    }
    keepKeysOfPictures(catalogue, pictures);
    progress(u"Zápis na disk"_s, 0, 0);
    for (const QString& path : {catalogue, pictures})
        syncFile(path);
    files::syncFolder(to);
    return source.notes();
}

backup::Report backup::run(const QString& folder, const QString& parent, int keep, const QDateTime& now,
                           const Progress& progress) {
    const QString target = QDir(parent).absolutePath();
    // The lock there is the program's.
    if (QFileInfo(target) == QFileInfo(folder))
        outputFile::fail(u"Záloha nemůže vzniknout přímo ve složce katalogu, zvolte jinou složku"_s, target);
    NewFolder made(target);
    const FolderLock lock(target);
    if (lock.isTaken()) outputFile::fail(u"Do složky právě zálohuje někdo jiný"_s, target);
    const QString making = unfinished(target);
    const auto clear = qScopeGuard([&making] { QDir(making).removeRecursively(); });
    if (!QDir(making).removeRecursively()) outputFile::fail(u"Složku nelze odstranit"_s, making);
    Report report;
    report.notes = copyPair(folder, making, progress);
    const QString name = freeName(target, {}, now);
    report.folder = QDir(target).filePath(name);
    if (!QDir(target).rename(making, report.folder))
        outputFile::fail(u"Složku nelze vytvořit"_s, report.folder);
    files::syncFolder(target);
    made.keep();
    if (keep > 0) removeOldest(target, keep, name, report);
    return report;
}
