#include "datatool/TablePictures.h"

#include <QDir>
#include <QFileInfo>

#include "core/mDatabase.h"
#include "datatool/BadLine.h"
#include "datatool/DataFiles.h"
#include "platform/files.h"
#include "platform/password.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

namespace {

const sqlite::Database& attach(const sqlite::Database& catalogue, const QString& folder) {
    TablePictures::open(folder);  // SQLite must not read a file whose header has not been checked
    const sqlite::Statement statement(catalogue, "ATTACH ? AS pictures");
    statement.bind(1, QFileInfo(dataFiles::picturesPath(folder)).absoluteFilePath());
    statement.step();
    catalogue.exec("PRAGMA pictures.synchronous=EXTRA");
    return catalogue;
}

}  // namespace

sqlite::Database TablePictures::open(const QString& folder) {
    const QString path = dataFiles::picturesPath(folder);
    try {
        sqlite::Database pictures(path, sqlite::Database::Mode::readWrite);
        password::checkHeader(pictures, databasePassword());
        return pictures;
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number(), u"%1 (%2)"_s.arg(failure.description(), path));
    }
}

TablePictures::TablePictures(const sqlite::Database& catalogue, const QString& folder, const QString& base,
                             bool isDryRun)
    : attached_(attach(catalogue, folder)),
      base_(base),
      isDryRun_(isDryRun),
      find_(attached_, "SELECT PicID FROM pictures.tPicture WHERE PicDVDID=? AND PicSkup=?"),
      insert_(
          attached_,
          "INSERT INTO pictures.tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) VALUES (?,?,?,?,?)"),
      update_(attached_, "UPDATE pictures.tPicture SET PicTyp=?, PicSize=?, PicDat=? WHERE PicID=?") {}

qint64 TablePictures::store(qint64 film, const QString& path, blob::Group group, qint64 line) {
    QByteArray content;
    try {
        const QString native = QDir::fromNativeSeparators(path).replace(u'\\', u'/');
        content = files::readAll(paths::ignoringCase(QDir(base_).filePath(native)));
    } catch (const RuntimeError& failure) {
        throw BadLine(line,
                      u"obrázek \"%1\" %2"_s.arg(
                          path, failure.number() == errors::fileNotFound ? u"chybí."_s : u"nelze číst."_s));
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
