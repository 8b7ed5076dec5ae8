#include "DataFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <optional>

#include "core/mDatabase.h"
#include "platform/errors.h"
#include "platform/password.h"
#include "platform/sqlite.h"

using namespace Qt::StringLiterals;

namespace {

QByteArray script(const QString& name) {
    QFile file(u":/data/"_s + name);
    if (!file.open(QFile::ReadOnly)) throw RuntimeError(errors::fileNotFound);
    return file.readAll();
}

void refuseExisting(const QString& path) {
    // A link that leads nowhere is somebody's too.
    if (!QFile::exists(path) && !QFileInfo(path).isSymLink()) return;
    throw RuntimeError(errors::pathAccess,
                       u"Soubor již existuje a nebude přepsán: %1"_s.arg(QDir::toNativeSeparators(path)));
}

/// A data file under construction. It has another name until it is whole, and goes away again unless it was
/// kept.
class NewFile final {
 public:
    explicit NewFile(const QString& path) : path_(path), made_(path + u".new"_s) {
        QFile::remove(made_);
        database_.emplace(made_, sqlite::Database::Mode::create);
    }
    ~NewFile() {
        database_.reset();
        QFile::remove(made_);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void run(const QStringList& scripts) const {
        sqlite::Transaction transaction(*database_);
        for (const QString& name : scripts)
            database_->exec(script(name).constData());
        password::stamp(*database_, databasePassword());
        transaction.commit();
    }
    void keep() {
        database_.reset();
        if (!QFile::rename(made_, path_)) throw RuntimeError(errors::pathAccess);
    }

 private:
    QString path_;
    QString made_;
    std::optional<sqlite::Database> database_;
};

}  // namespace

QString dataFiles::cataloguePath(const QString& folder) {
    return QDir(folder).filePath(u"data.ddb"_s);
}

QString dataFiles::picturesPath(const QString& folder) {
    return QDir(folder).filePath(u"pictures.ddb"_s);
}

void dataFiles::create(const QString& folder) {
    if (!QDir().mkpath(folder)) {
        throw RuntimeError(errors::pathAccess, u"Složku nelze vytvořit: %1"_s.arg(folder));
    }
    const QString catalogue = cataloguePath(folder);
    const QString pictures = picturesPath(folder);
    refuseExisting(catalogue);
    refuseExisting(pictures);
    NewFile newCatalogue(catalogue);
    NewFile newPictures(pictures);
    newCatalogue.run({u"catalogue.sql"_s, u"dictionaries.sql"_s});
    newPictures.run({u"pictures.sql"_s});
    newPictures.keep();
    newCatalogue.keep();
}
