#include "platform/files.h"

#include <QFileInfo>
#include <QSaveFile>

#include "platform/errors.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#else
#include <io.h>
#endif

namespace {

void openForReading(QFile& file) {
    if (!QFileInfo(file.fileName()).isFile()) throw RuntimeError(errors::fileNotFound);
    if (!file.open(QFile::ReadOnly)) throw RuntimeError(errors::pathAccess);
}

/// A read error looks like the end of the file.
void checkRead(const QFile& file) {
    if (file.error() != QFileDevice::NoError) throw RuntimeError(errors::pathAccess);
}

void openForWriting(QSaveFile& file) {
    if (!file.open(QFile::WriteOnly)) throw RuntimeError(errors::pathAccess);
}

/// A full disk may accept part of the bytes without an error.
void writeAll(QSaveFile& file, const QByteArray& bytes) {
    if (file.write(bytes) != bytes.size()) throw RuntimeError(errors::diskFull);
}

void commitOrThrow(QSaveFile& file) {
    if (!files::commit(file)) throw RuntimeError(errors::diskFull);
}

/// Syncs an open file or folder. A file system without support for it is no failure.
bool syncHandle(int handle) {
#ifdef Q_OS_UNIX
    return fsync(handle) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS;
#else
    return _commit(handle) == 0;
#endif
}

}  // namespace

void files::keepToOwner(QFileDevice& file) {
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

bool files::sync(QFileDevice& file) {
    return file.flush() && file.error() == QFileDevice::NoError && syncHandle(file.handle());
}

void files::startSync(const QString& path) {
#ifdef Q_OS_LINUX
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    if (handle < 0) return;
    sync_file_range(handle, 0, 0, SYNC_FILE_RANGE_WRITE);
    ::close(handle);
#else
    Q_UNUSED(path);
#endif
}

void files::syncFolder(const QString& folder) {
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    syncHandle(handle);
    ::close(handle);
#else
    Q_UNUSED(folder);  // the file system journals renames itself
#endif
}

bool files::commit(QSaveFile& file) {
    // Qt 6.4 ignores a failed write of the last buffer, so that a full disk would look like success.
    if (!sync(file)) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) return false;
    syncFolder(QFileInfo(file.fileName()).absolutePath());
    return true;
}

QByteArray files::readAll(const QString& path) {
    QFile file(path);
    openForReading(file);
    QByteArray bytes = file.readAll();
    checkRead(file);
    return bytes;
}

void files::write(const QString& path, const QByteArrayList& pieces) {
    QSaveFile file(path);
    openForWriting(file);
    files::keepToOwner(file);
    for (const QByteArray& piece : pieces)
        writeAll(file, piece);
    commitOrThrow(file);
}

void files::copy(const QString& from, const QString& to) {
    QFile source(from);
    openForReading(source);
    QSaveFile target(to);
    openForWriting(target);
    constexpr qint64 block = 100000;
    for (QByteArray piece = source.read(block); !piece.isEmpty(); piece = source.read(block))
        writeAll(target, piece);
    checkRead(source);
    commitOrThrow(target);
}
