#include "DataFiles.h"

#include <QDir>
#include <QFile>

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
    if (!QFile::exists(path)) return;
    throw RuntimeError(errors::pathAccess,
                       u"Soubor již existuje a nebude přepsán: %1"_s.arg(QDir::toNativeSeparators(path)));
}

/// A data file that goes away again unless it was kept.
class NewFile final {
 public:
    explicit NewFile(QString path)
        : path_(std::move(path)), database_(path_, sqlite::Database::Mode::create) {}
    ~NewFile() {
        if (!kept_) QFile::remove(path_);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    void run(const QStringList& scripts) const {
        sqlite::Transaction transaction(database_);
        for (const QString& name : scripts)
            database_.exec(script(name).constData());
        password::stamp(database_, databasePassword());
        transaction.commit();
    }
    void keep() { kept_ = true; }

 private:
    QString path_;
    sqlite::Database database_;
    bool kept_ = false;
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
    newCatalogue.keep();
    newPictures.keep();
}
