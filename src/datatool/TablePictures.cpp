#include "datatool/TablePictures.h"

#include <QDir>
#include <QFileInfo>

#include "datatool/BadLine.h"
#include "datatool/DataFiles.h"
#include "datatool/findings.h"
#include "platform/files.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

namespace {

const sqlite::Database& attach(const sqlite::Database& catalogue, const QString& file) {
    dataFiles::checked(file, sqlite::Database::Mode::readOnly);  // SQLite must not read an unchecked header
    catalogue.attach(file, u"pictures"_s);
    catalogue.exec("PRAGMA pictures.synchronous=EXTRA");
    return catalogue;
}

QByteArray dropSql(const findings::PictureLink& link) {
    return "UPDATE tDVD SET " + link.column + "=0 WHERE DVDID=? AND " + findings::wrongLink(link);
}

/// Why a file cannot be a picture, in Czech.
QString faultOf(const QString& path, const RuntimeError& failure) {
    if (QFileInfo(path).isDir()) return u"není soubor."_s;
    return failure.number() == errors::fileNotFound ? u"chybí."_s : u"nelze číst."_s;
}

}  // namespace

TablePictures::TablePictures(const sqlite::Database& catalogue, const QString& file, const QString& base,
                             bool isDryRun)
    : attached_(attach(catalogue, file)),
      base_(base),
      isDryRun_(isDryRun),
      find_(attached_, "SELECT PicID FROM pictures.tPicture WHERE PicDVDID=? AND PicSkup=?"),
      insert_(
          attached_,
          "INSERT INTO pictures.tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) VALUES (?,?,?,?,?)"),
      update_(attached_, "UPDATE pictures.tPicture SET PicTyp=?, PicSize=?, PicDat=? WHERE PicID=?"),
      dropCover_(attached_, dropSql(findings::pictureLinks()[0])),
      dropPreview_(attached_, dropSql(findings::pictureLinks()[1])) {}

qint64 TablePictures::store(qint64 film, const QString& path, blob::Group group, qint64 line) {
    const QString native = QDir::fromNativeSeparators(path).replace(u'\\', u'/');
    const QString file = paths::ignoringCase(QDir(base_).filePath(native));
    QByteArray content;
    try {
        content = files::readAll(file);
    } catch (const RuntimeError& failure) {
        throw BadLine(line, u"obrázek \"%1\" %2"_s.arg(path, faultOf(file, failure)));
    }
    if (content.isEmpty()) throw BadLine(line, u"obrázek \"%1\" je prázdný."_s.arg(path));
    ++stored_;
    if (isDryRun_) return 0;
    // A film deleted under the same key has left its picture.
    find_.bind(1, film);
    find_.bind(2, blob::letter(group));
    const qint64 left = find_.step() ? find_.number(0) : 0;
    find_.reset();
    const sqlite::Statement& write = left != 0 ? update_ : insert_;
    int parameter = 0;
    if (left == 0) {
        write.bind(++parameter, film);
        write.bind(++parameter, blob::letter(group));
    }
    write.bind(++parameter, path.right(3));
    write.bind(++parameter, content.size());
    content.append(blob::storedLength(content.size()) - content.size(), '\0');
    write.bindBytesInPlace(++parameter, content);
    if (left != 0) write.bind(++parameter, left);
    write.step();
    write.reset();
    return left != 0 ? left : sqlite3_last_insert_rowid(attached_.handle());
}

void TablePictures::dropForeignKey(qint64 film, blob::Group group) {
    const sqlite::Statement& drop = group == blob::Group::cover ? dropCover_ : dropPreview_;
    drop.bind(1, film);
    drop.step();
    dropped_ += sqlite3_changes(attached_.handle());
    drop.reset();
}
