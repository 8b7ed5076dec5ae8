#include "platform/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <algorithm>

#include "platform/errors.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

namespace {

QString theProgramFolder;

/// The files of the ready-made folder, without the copies that dpkg keeps beside them while it replaces them.
QFileInfoList readyMadeFiles(const QString& folder) {
    QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
    files.removeIf([](const QFileInfo& file) { return file.suffix().startsWith(u"dpkg-"); });
    return files;
}

void seed(const QString& from, const QString& userFolder) {
    const RuntimeError failure(errors::pathAccess, u"Složku pro data programu nelze připravit: %1"_s.arg(
                                                       QDir::toNativeSeparators(userFolder)));
    // One of them is missing while the package is being installed or removed.
    for (const QString& needed : {u"/data.ddb"_s, u"/pictures.ddb"_s}) {
        if (!QFileInfo::exists(from + needed)) throw failure;
    }
    if (!QDir().mkpath(userFolder)) throw failure;
    // Created under another name and renamed when complete, so that an interrupted start leaves no
    // incomplete one.
    QTemporaryDir copy(userFolder + u"/data-XXXXXX"_s);
    if (!copy.isValid()) throw failure;
    const QFileInfoList files = readyMadeFiles(from);
    for (const QFileInfo& file : files) {
        QFile target(copy.filePath(file.fileName()));
        try {
            files::copy(file.filePath(), target.fileName());
        } catch (const RuntimeError&) {
            throw failure;
        }
        files::keepToOwner(target);
    }
    if (!QDir().rename(copy.path(), userFolder + u"/data"_s)) throw failure;
    files::syncFolder(userFolder);
    copy.setAutoRemove(false);
}

void replaceIfOther(const QString& file, const QString& shippedFile) {
    const QByteArray shipped = files::readAll(shippedFile);
    if (!QFileInfo::exists(file) || files::readAll(file) != shipped) files::write(file, {shipped});
}

/// Updates pages and help to the installed version. The data files are the user's own. A file that cannot be
/// replaced must not prevent the program from starting: the old one stays.
void refresh(const QString& from, const QString& data) {
    const QFileInfoList files = readyMadeFiles(from);
    for (const QFileInfo& file : files) {
        if (file.suffix() == u"ddb") continue;
        skipFailure([&] { replaceIfOther(data + u'/' + file.fileName(), file.filePath()); });
    }
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
    const auto from = std::find_if(readyMadeData.cbegin(), readyMadeData.cend(),
                                   [](const QString& folder) { return QFileInfo(folder).isDir(); });
    if (from == readyMadeData.cend()) return userFolder;
    const QString data = userFolder + u"/data"_s;
    if (QFileInfo::exists(data)) {
        refresh(*from, data);
    } else {
        seed(*from, userFolder);
    }
    return userFolder;
}
