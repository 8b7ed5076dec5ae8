#include "datatool/FilmExport.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <optional>

#include "datatool/CsvText.h"
#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/PictureFiles.h"
#include "datatool/outputFile.h"
#include "datatool/tableHeadings.h"
#include "platform/FolderLock.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

using blob::Group;

namespace {

/// Unlike QString::fromUtf8, keeps a byte order mark with which a text begins.
QString textOf(const sqlite::Statement& films, int column) {
    if (films.isNull(column)) return {};
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const auto* utf8 = reinterpret_cast<const char*>(sqlite3_column_text(films.handle(), column));
    const QString text = decoder(QByteArrayView(utf8, sqlite3_column_bytes(films.handle(), column)));
    return text.isNull() ? u""_s : text;
}

QString fieldOf(const sqlite::Statement& films, int column) {
    const bool isNumber = sqlite3_column_type(films.handle(), column) == SQLITE_INTEGER;
    return isNumber ? QString::number(films.number(column)) : csvField::ofText(textOf(films, column));
}

/// The films with their departments; the last column tells that a film has the key of none that exists.
constexpr auto allFilms =
    "SELECT tDVD.*, OdJm AS Oddeleni, Oddel_ID IS NOT NULL AND ODID IS NULL "
    "FROM tDVD LEFT JOIN tOddeleni ON ODID=Oddel_ID ORDER BY DVDID";

class Writer final {
 public:
    /// @param pictures null to export none.
    Writer(const sqlite::Database& database, PictureFiles* pictures)
        : database_(database),
          pictures_(pictures),
          films_(database, allFilms),
          columns_(sqlite3_column_count(films_.handle()) - 1) {}

    filmExport::Report write(const QString& csv, const Progress& progress) {
        QSaveFile file(csv);
        if (!file.open(QFile::WriteOnly)) outputFile::failWriting(csv);
        file.write(line(header()));
        const qint64 all = database_.number("SELECT COUNT(*) FROM tDVD");
        filmExport::Report report;
        while (films_.step()) {
            interruption::check();
            file.write(line(fields()));
            progress(u"Zápis filmů"_s, ++report.films, all);
        }
        if (!files::commit(file)) outputFile::fail(u"Soubor nelze zapsat, je možná plný disk"_s, csv);
        if (pictures_ == nullptr) return report;
        report.pictures = pictures_->written();
        report.missing = pictures_->missing();
        return report;
    }

 private:
    static QByteArray line(const QStringList& fields) { return (fields.join(u',') + u"\r\n"_s).toUtf8(); }

    QStringList header() const {
        QStringList names;
        for (int column = 0; column < columns_; ++column)
            names += QString::fromUtf8(sqlite3_column_name(films_.handle(), column));
        if (pictures_ != nullptr)
            names << tableHeadings::cover.toString() << tableHeadings::preview.toString();
        return names;
    }

    QStringList fields() const {
        QStringList fields;
        for (int column = 0; column < columns_; ++column)
            fields += fieldOf(films_, column);
        // A key without its department must not look like a department without a name.
        if (films_.number(columns_) != 0) fields.back().clear();
        if (pictures_ != nullptr)
            fields << picture("Obal_ID", Group::cover) << picture("Nahled_ID", Group::preview);
        return fields;
    }

    /// The field that names the file of a picture, which is written; blank without a picture.
    QString picture(const char* key, Group group) const {
        const QString name = pictures_->write(number("DVDID"), number(key), group);
        return name.isEmpty() ? name : csvField::ofText(name);
    }

    qint64 number(const char* name) const {
        for (int column = 0; column < columns_; ++column) {
            if (qstrcmp(sqlite3_column_name(films_.handle(), column), name) == 0)
                return films_.number(column);
        }
        throw RuntimeError(errors::itemNotFound);
    }

    const sqlite::Database& database_;
    PictureFiles* pictures_;
    sqlite::Statement films_;
    int columns_;
};

/// Begins the name of a folder that is not complete. Each is locked as long as its maker lives.
constexpr QStringView unfinished = u".kalvera-export-";

/// Removes what killed exports have left. Folders of other users, which anybody can put into a shared one,
/// and links are left alone.
void removeLeftBehind(const QDir& parent, const QFileInfo& own) {
    const QFileInfoList folders =
        parent.entryInfoList({unfinished.toString() + u'*'}, QDir::Dirs | QDir::Hidden);
    for (const QFileInfo& folder : folders) {
        if (folder == own || folder.isSymLink() || folder.ownerId() != own.ownerId()) continue;
        if (!FolderLock(folder.filePath()).isTaken()) QDir(folder.filePath()).removeRecursively();
    }
}

}  // namespace

filmExport::Report filmExport::write(const QString& folder, const QString& csv, const Progress& progress) {
    const sqlite::Database database = dataFiles::openCatalogue(folder);
    outputFile::refuseExistingOrHomeless(csv);
    return Writer(database, nullptr).write(csv, progress);
}

filmExport::Report filmExport::writeWithPictures(const QString& folder, const QString& target,
                                                 const Progress& progress) {
    const sqlite::Database database = dataFiles::openCatalogue(folder);
    const QString path = QDir::cleanPath(QFileInfo(target).absoluteFilePath());
    outputFile::refuseExistingOrHomeless(path);
    const QDir parent = QFileInfo(path).dir();
    QTemporaryDir made(parent.filePath(unfinished.toString() + u"XXXXXX"_s));
    if (!made.isValid()) outputFile::fail(u"Složku nelze vytvořit"_s, path);
    std::optional<FolderLock> lock(made.path());
    removeLeftBehind(parent, QFileInfo(made.path()));
    Report report;
    try {
        PictureFiles pictures(folder, made.path());
        report = Writer(database, &pictures).write(made.filePath(u"films.csv"_s), progress);
    } catch (const RuntimeError& failure) {
        // The folder that the user knows.
        throw RuntimeError(failure.number(), QString(failure.description()).replace(made.path(), path));
    }
    lock.reset();
    if (!QDir().rename(made.path(), path)) outputFile::fail(u"Složku nelze vytvořit"_s, path);
    made.setAutoRemove(false);
    files::syncFolder(QFileInfo(path).path());
    return report;
}
