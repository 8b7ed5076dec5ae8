#include "platform/files.h"

#include <QFileInfo>
#include <QSaveFile>

#include "platform/errors.h"

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

/// A full disk may take part of the bytes without an error.
void writeAll(QSaveFile& file, const QByteArray& bytes) {
    if (file.write(bytes) != bytes.size()) throw RuntimeError(errors::diskFull);
}

void commit(QSaveFile& file) {
    if (!file.commit()) throw RuntimeError(errors::diskFull);
}

}  // namespace

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
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    for (const QByteArray& piece : pieces)
        writeAll(file, piece);
    commit(file);
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
    commit(target);
}
