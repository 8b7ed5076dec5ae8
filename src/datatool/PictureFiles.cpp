#include "datatool/PictureFiles.h"

#include <QDir>

#include "datatool/DataFiles.h"
#include "datatool/pictureFormat.h"
#include "datatool/shownText.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

PictureFiles::PictureFiles(const QString& folder, const QString& target)
    : database_(dataFiles::checked(dataFiles::picturesPath(folder), sqlite::Database::Mode::readWrite)),
      find_(database_, "SELECT PicTyp, PicSize, PicDat FROM tPicture WHERE PicID=?"),
      target_(target) {}

QString PictureFiles::write(qint64 film, qint64 id, blob::Group group) {
    if (id == 0) return {};
    const bool isCover = group == blob::Group::cover;
    find_.bind(1, id);
    const bool isThere = find_.step();
    const QString type = isThere ? find_.text(0) : QString();
    const qint64 size = isThere ? find_.number(1) : 0;
    const auto* data = isThere ? static_cast<const char*>(sqlite3_column_blob(find_.handle(), 2)) : nullptr;
    const bool isWhole = size > 0 && sqlite3_column_bytes(find_.handle(), 2) >= size;
    QString name;
    if (isWhole && pictureFormat::isUsableType(type)) {
        name = u"%1-%2.%3"_s.arg(isCover ? u"obal"_s : u"nahled"_s).arg(film).arg(type);
        files::write(QDir(target_).filePath(name), {QByteArray::fromRawData(data, size)});
        ++written_;
    } else {
        missing_ += u"film %1, %2 číslo %3: %4"_s.arg(
            QString::number(film), isCover ? u"obal"_s : u"náhled"_s, QString::number(id),
            isWhole ? u"neznámý typ souboru „%1“"_s.arg(shownText(type))
                    : u"obrázek chybí nebo je poškozený"_s);
    }
    find_.reset();
    return name;
}
