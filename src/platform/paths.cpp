#include "platform/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

QString theProgramFolder;

void seed(const QString& from, const QString& userFolder) {
    const RuntimeError failure(errors::pathAccess, u"Složku pro data programu nelze připravit: %1"_s.arg(
                                                       QDir::toNativeSeparators(userFolder)));
    if (!QDir().mkpath(userFolder)) throw failure;
    // Made under another name and renamed when whole, so that a start cut short never leaves half of it.
    QTemporaryDir copy(userFolder + u"/data-XXXXXX"_s);
    if (!copy.isValid()) throw failure;
    const QFileInfoList files = QDir(from).entryInfoList(QDir::Files);
    for (const QFileInfo& file : files) {
        const QString target = copy.filePath(file.fileName());
        if (!QFile::copy(file.filePath(), target)) throw failure;
        if (!QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner)) throw failure;
    }
    if (!QDir().rename(copy.path(), userFolder + u"/data"_s)) throw failure;
    copy.setAutoRemove(false);
}

}  // namespace

QString paths::programFolder() {
    return theProgramFolder;
}

void paths::setProgramFolder(const QString& folder) {
    theProgramFolder = QDir::toNativeSeparators(QDir::cleanPath(QDir(folder).absolutePath()));
}

QString paths::inProgramFolder(QStringView tail) {
    return theProgramFolder + tail.toString().replace(u'\\', QDir::separator());
}

QString paths::Dir(const QString& path) {
    const QFileInfo file(path);
    return file.isFile() ? file.fileName() : QString();
}

QString paths::ignoringCase(const QString& path) {
    const QFileInfo file(path);
    if (file.exists()) return path;
    const QStringList names = file.dir().entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        if (name.compare(file.fileName(), Qt::CaseInsensitive) == 0) {
            return QDir::toNativeSeparators(file.dir().filePath(name));
        }
    }
    return path;
}

QString paths::chooseProgramFolder(const QString& executableFolder, const QString& userFolder,
                                   const QStringList& readyMadeData) {
    const QFileInfo ownData(executableFolder + u"/data"_s);
    if (ownData.isDir() && ownData.isWritable()) return executableFolder;
    if (!QFileInfo::exists(userFolder + u"/data"_s)) {
        for (const QString& from : readyMadeData) {
            if (!QFileInfo(from).isDir()) continue;
            seed(from, userFolder);
            break;
        }
    }
    return userFolder;
}
