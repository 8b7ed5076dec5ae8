#include "datatool/TablePictures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "datatool/BadLine.h"
#include "datatool/DataFiles.h"
#include "datatool/findings.h"
#include "datatool/pictureFormat.h"
#include "datatool/shownText.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

namespace {

const sqlite::Database& attach(const sqlite::Database& catalogue, const QString& file, bool isDryRun) {
    using Mode = sqlite::Database::Mode;
    // SQLite must not read an unchecked header. Only a writer can roll back what a killed one has begun.
    dataFiles::checked(file, isDryRun ? Mode::readOnly : Mode::readWrite);
    catalogue.attach(file, u"pictures"_s);
    catalogue.exec("PRAGMA pictures.synchronous=EXTRA");
    return catalogue;
}

QByteArray dropSql(const findings::PictureLink& link) {
    return "UPDATE tDVD SET " + link.column + "=0 WHERE DVDID=? AND " + findings::wrongLink(link);
}

/// Why a file cannot be taken, in Czech, as an end of "obrázek „a.jpg“ …".
class Unfit final : public RuntimeError {
 public:
    explicit Unfit(const QString& what) : RuntimeError(errors::invalidPicture, what) {}
};

}  // namespace

TablePictures::TablePictures(const sqlite::Database& catalogue, const QString& file, const QString& base,
                             bool isDryRun)
    : attached_(attach(catalogue, file, isDryRun)),
      base_(base),
      isDryRun_(isDryRun),
      find_(attached_, "SELECT PicID FROM pictures.tPicture WHERE PicDVDID=? AND PicSkup=?"),
      insert_(
          attached_,
          "INSERT INTO pictures.tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) VALUES (?,?,?,?,?)"),
      update_(attached_, "UPDATE pictures.tPicture SET PicTyp=?, PicSize=?, PicDat=? WHERE PicID=?"),
      dropCover_(attached_, dropSql(findings::pictureLinks()[0])),
      dropPreview_(attached_, dropSql(findings::pictureLinks()[1])) {}

TablePictures::Content TablePictures::read(const QString& path, bool isExported) const {
    constexpr qint64 otherColumns = 1000;  // the limit is that of a row
    const qint64 longest = sqlite3_limit(attached_.handle(), SQLITE_LIMIT_LENGTH, -1) - otherColumns;
    const QFileInfo found(path);
    if (!found.exists()) throw Unfit(u"chybí."_s);
    if (!found.isFile()) throw Unfit(u"není soubor."_s);
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) throw Unfit(u"nelze číst."_s);
    const qint64 size = file.size();
    if (size == 0) throw Unfit(u"je prázdný."_s);
    if (blob::storedLength(size) > longest) {
        constexpr qint64 megabyte = 1'000'000;
        throw Unfit(u"je příliš velký: má %1 MB a uložit se dá nejvýš %2 MB."_s.arg(size / megabyte)
                        .arg(longest / megabyte));
    }
    if (!isExported && !pictureFormat::isPicture(file.peek(pictureFormat::headLength)))
        throw Unfit(u"není obrázek, který program umí zobrazit."_s);
    Content content{size, QByteArray(blob::storedLength(size), '\0')};
    if (file.read(content.data.data(), size) != size) throw Unfit(u"nelze číst."_s);
    return content;
}

qint64 TablePictures::store(qint64 film, const QString& path, blob::Group group, bool isExported,
                            qint64 line) {
    const QString native = QDir::fromNativeSeparators(path).replace(u'\\', u'/');
    const QString type = path.right(3);
    Content content;
    try {
        content = read(paths::ignoringCase(QDir(base_).filePath(native)), isExported);
        if (!pictureFormat::isUsableType(type)) throw Unfit(u"nemá v názvu příponu."_s);
    } catch (const Unfit& failure) {
        throw BadLine(line, u"obrázek „%1“ %2"_s.arg(shownText(path), failure.description()));
    }
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
    write.bind(++parameter, type);
    write.bind(++parameter, content.size);
    write.bindBytesInPlace(++parameter, content.data);
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
