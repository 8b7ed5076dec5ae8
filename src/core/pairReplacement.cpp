#include "core/pairReplacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>

#include "platform/errors.h"
#include "platform/files.h"
#include "platform/sqlite.h"

using namespace Qt::StringLiterals;

namespace {

const QStringView catalogueName = u"data.ddb";
const QStringView picturesName = u"pictures.ddb";
const QStringView logIndex = u"-shm";

QString newPair(const QString& folder) {
    return QDir(folder).filePath(u".nova-dvojice"_s);
}

QString in(const QString& folder, QStringView name, QStringView ending = {}) {
    return QDir(folder).filePath(name.toString() + ending.toString());
}

std::filesystem::path native(const QString& path) {
    return QDir(path).absolutePath().toStdU16String();
}

[[noreturn]] void fail(const QString& what, const QString& path) {
    throw RuntimeError(errors::pathAccess, u"%1: %2"_s.arg(what, QDir::toNativeSeparators(path)));
}

/// Rolls back what a killed writer left. A file that is too damaged for that keeps its journal.
void rollBack(const QString& path) {
    skipFailure([&] {
        sqlite::Database(path, sqlite::Database::Mode::readWrite)
            .number("SELECT COUNT(*) FROM sqlite_schema");
    });
}

void keepUnder(const QString& path, const QString& other) {
    std::error_code failure;
    // A second name of a symbolic link would lead nowhere from another folder.
    std::filesystem::create_hard_link(native(QFileInfo(path).canonicalFilePath()), native(other), failure);
    if (!failure) return;
    files::copy(path, other);
    QFile copy(other);
    files::keepToOwner(copy);
}

/// Unlike QFile::rename, this replaces an existing file.
void rename(const QString& from, const QString& to) {
    std::error_code failure;
    std::filesystem::rename(native(from), native(to), failure);
    if (failure) fail(u"Soubor nelze nahradit"_s, to);
}

/// Whether both are names of one file. A symbolic link is none: without the file it leads nowhere.
bool isSame(const QString& path, const QString& other) {
    std::error_code failure;
    return std::filesystem::equivalent(native(path), native(other), failure) &&
           !QFileInfo(path).isSymLink() && !QFileInfo(other).isSymLink();
}

/// After a kill between putting aside and renaming, the files aside are still those in place.
void removeSecondNames(const QString& folder) {
    // Through a link to the folder itself the only names would be removed.
    const QStringList subfolders =
        QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QString& name : subfolders) {
        const QString aside = QDir(folder).filePath(name);
        if (!isSame(in(aside, catalogueName), in(folder, catalogueName))) continue;
        const QString pictures = in(aside, picturesName);
        if (QFileInfo::exists(pictures) && !isSame(pictures, in(folder, picturesName))) continue;
        for (const QStringView file : {picturesName, catalogueName}) {
            for (const QStringView ending : {pairReplacement::journal, pairReplacement::log, QStringView()})
                QFile::remove(in(aside, file, ending));
        }
        QDir().rmdir(aside);
    }
}

/// Removes what the engine leaves of a transaction on both files that is killed before a journal names it.
/// The journals are looked for after the list is made: as long as a transaction lasts, it has them.
void removeStaleSuperJournals(const QString& folder) {
    const QStringList found =
        QDir(folder).entryList({catalogueName.toString() + u"-mj*"_s, picturesName.toString() + u"-mj*"_s},
                               QDir::Files | QDir::NoSymLinks);
    for (const QStringView name : {catalogueName, picturesName}) {
        // Journals of linked files are elsewhere, perhaps on a disk that is not there.
        if (QFileInfo(in(folder, name)).isSymLink()) return;
        if (QFileInfo::exists(in(folder, name, pairReplacement::journal))) return;
    }
    for (const QString& name : found)
        QFile::remove(QDir(folder).filePath(name));
}

void removeCompanions(const QString& folder, std::initializer_list<QStringView> endings) {
    for (const QStringView name : {catalogueName, picturesName}) {
        for (const QStringView ending : endings)
            QFile::remove(in(folder, name, ending));
    }
    files::syncFolder(folder);
}

bool putAside(const QString& folder, const QString& aside) {
    bool any = false;
    for (const QStringView name : {catalogueName, picturesName}) {
        const QString path = in(folder, name);
        if (!QFileInfo::exists(path)) continue;
        if (!any && !QDir().mkpath(aside)) fail(u"Složku nelze vytvořit"_s, aside);
        any = true;
        if (QFileInfo::exists(pairReplacement::companionOf(path, pairReplacement::journal))) rollBack(path);
        keepUnder(path, in(aside, name));
        for (const QStringView ending : {pairReplacement::journal, pairReplacement::log}) {
            const QString companion = pairReplacement::companionOf(path, ending);
            if (QFileInfo::exists(companion)) keepUnder(companion, in(aside, name, ending));
        }
    }
    if (any) files::syncFolder(aside);
    return any;
}

}  // namespace

QString pairReplacement::companionOf(const QString& path, QStringView ending) {
    const QString file = QFileInfo(path).canonicalFilePath();
    return (file.isEmpty() ? path : file) + ending.toString();
}

QString pairReplacement::makeRoom(const QString& folder) {
    finish(folder);
    // The pictures must never stand there alone.
    QString room = newPair(folder);
    QFile::remove(in(room, picturesName));
    QDir(room).removeRecursively();
    return room;
}

void pairReplacement::giveUp(const QString& folder) noexcept {
    // Half a replacement is to be finished.
    if (!isHalf(folder) && QFileInfo::exists(newPair(folder))) skipFailure([&] { makeRoom(folder); });
}

bool pairReplacement::replace(const QString& folder, const QString& aside) {
    const QString from = newPair(folder);
    const bool any = putAside(folder, aside);
    // What stayed would be played into the new file. A journal that is still there is of no use to the old
    // one; a log would be missing in it after a kill.
    removeCompanions(folder, {pairReplacement::journal});
    rename(in(from, catalogueName), in(folder, catalogueName));
    removeCompanions(folder, {pairReplacement::log, logIndex});
    rename(in(from, picturesName), in(folder, picturesName));
    files::syncFolder(folder);
    QDir(from).removeRecursively();
    return any;
}

bool pairReplacement::isHalf(const QString& folder) {
    return QFileInfo::exists(in(newPair(folder), picturesName)) &&
           !QFileInfo::exists(in(newPair(folder), catalogueName));
}

QString pairReplacement::currentPictures(const QString& folder) {
    return in(isHalf(folder) ? newPair(folder) : folder, picturesName);
}

void pairReplacement::finish(const QString& folder) {
    removeSecondNames(folder);
    removeStaleSuperJournals(folder);
    if (!isHalf(folder)) return;
    removeCompanions(folder, {pairReplacement::journal, pairReplacement::log, logIndex});
    rename(in(newPair(folder), picturesName), in(folder, picturesName));
    files::syncFolder(folder);
    QDir(newPair(folder)).removeRecursively();
}
