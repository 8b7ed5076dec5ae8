#include "film/mBlobDATA.h"

#include <QFile>

#include "platform/Outside.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

namespace {

using blob::block;

/// Reads into the buffer. At the end of the file the rest of the buffer is left unchanged.
void fill(QByteArray& buffer, QFile& file) {
    if (file.read(buffer.data(), buffer.size()) < 0) throw RuntimeError(errors::pathAccess);
}

/// Writes a chunk of a picture. A chunk that is too short means that the row's data are damaged.
void write(QFile& file, const QByteArray& chunk, qint64 length) {
    if (chunk.size() != length) throw RuntimeError(errors::invalidPicture);
    if (file.write(chunk) != length) throw RuntimeError(errors::diskFull);
}

void writePicture(const ado::Recordset& rs, QFile& file, QStringView dataColumn, qint64 length) {
    const ado::Field data = rs.Fields(dataColumn);
    write(file, data.GetChunk(length % block), length % block);
    for (qint64 piece = 1; piece <= length / block; ++piece)
        write(file, data.GetChunk(block), block);
    if (!file.flush()) throw RuntimeError(errors::diskFull);
}

/// Writes the picture of the current row to `path`, replacing an existing file.
void takeOut(const ado::Recordset& rs, const QString& path, QStringView dataColumn, QStringView sizeColumn) {
    if (QFile::exists(path) && !QFile::remove(path)) throw RuntimeError(errors::pathAccess);
    const DbValue size = rs.Fields(sizeColumn).Value();
    const qint64 length = size.isNull() ? 0 : size.toLong();
    if (length <= 0) return;
    QFile file(path);
    if (!file.open(QFile::WriteOnly)) throw RuntimeError(errors::pathAccess);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    try {
        writePicture(rs, file, dataColumn, length);
    } catch (const RuntimeError&) {
        // A partial file would be stored as the picture when the film is saved.
        file.remove();
        throw;
    }
}

}  // namespace

QString blob::letter(Group group) {
    return group == Group::cover ? u"O"_s : u"N"_s;
}

void blob::SouborDoBlob(const ado::Recordset& rs, const QString& path, QStringView dataColumn,
                        QStringView sizeColumn, Group) {
    if (path.isEmpty()) return;
    QFile file(paths::ignoringCase(path));
    if (!file.open(QFile::ReadOnly)) {
        throw RuntimeError(file.exists() ? errors::pathAccess : errors::fileNotFound);
    }
    const qint64 length = file.size();
    if (length == 0) {
        file.close();
        MsgBox(path + u" je poškozený nebo nebyl nalezen."_s);
        return;
    }
    const ado::Field data = rs.Fields(dataColumn);
    QByteArray buffer(length % block + 1, '\0');
    fill(buffer, file);
    data.AppendChunk(buffer);
    buffer.fill('\0', block + 1);
    for (qint64 piece = 1; piece <= length / block; ++piece) {
        fill(buffer, file);
        data.AppendChunk(buffer);
    }
    file.close();
    rs.Fields(sizeColumn).setValue(length);
}

void blob::BlobDoSouboru(const ado::Recordset& rs, const QString&, QStringView dataColumn,
                         QStringView sizeColumn, const QString& type, Group group) {
    const QString name = group == Group::cover ? u"\\data\\obal."_s : u"\\data\\nahled."_s;
    takeOut(rs, paths::inProgramFolder(name + type), dataColumn, sizeColumn);
}

QString blob::BlobDoTisku(const ado::Recordset& rs, QStringView dataColumn, QStringView sizeColumn,
                          const QString& type, qint32 id, Group group) {
    const QString tail = QString::number(id) + u'.' + type;
    const QString name = group == Group::cover ? u"\\data\\o"_s : u"\\data\\n"_s;
    takeOut(rs, paths::inProgramFolder(name + tail), dataColumn, sizeColumn);
    return u'n' + tail;
}
