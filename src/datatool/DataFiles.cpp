#include "datatool/DataFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "core/mDatabase.h"
#include "core/mFunction.h"
#include "datatool/NewPair.h"
#include "datatool/outputFile.h"
#include "platform/errors.h"
#include "platform/password.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

namespace {

sqlite::Database open(const QString& path) {
    sqlite::Database database = dataFiles::checked(path, sqlite::Database::Mode::readWrite);
    database.syncEveryCommit();
    return database;
}

}  // namespace

QString dataFiles::cataloguePath(const QString& folder) {
    return QDir(folder).filePath(u"data.ddb"_s);
}

QString dataFiles::picturesPath(const QString& folder) {
    return QDir(folder).filePath(u"pictures.ddb"_s);
}

void dataFiles::refuseFile(const QString& folder) {
    const QFileInfo file(folder);
    if (file.isFile()) outputFile::fail(u"Je to soubor; uveďte složku, ve které je"_s, folder);
}

sqlite::Database dataFiles::checked(const QString& path, sqlite::Database::Mode mode) {
    try {
        sqlite::Database database(path, mode);
        password::checkHeader(database, databasePassword());
        database.readSchema();
        return database;
    } catch (const sqlite::Failure& failure) {
        throw sqlite::Failure(failure.number(), u"%1 (%2)"_s.arg(failure.description(), path),
                              failure.resultCode());
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number(), u"%1 (%2)"_s.arg(failure.description(), path));
    }
}

QString dataFiles::ownFolder() {
    const QString user =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/BremDVDKalvera"_s;
    QString folder =
        paths::chooseProgramFolder(QCoreApplication::applicationDirPath(), user, {}) + u"/data"_s;
    // That catalogue and the pictures are in two folders, and the catalogue beside the pictures is not in
    // use.
    const QString catalogue = cataloguePath(folder);
    const QFileInfo set(CtiNastaveni(u"ActDB"_s, catalogue));
    if (set.absoluteFilePath() != QFileInfo(catalogue).absoluteFilePath() &&
        (!set.exists() || set.canonicalFilePath() != QFileInfo(catalogue).canonicalFilePath())) {
        throw RuntimeError(
            errors::pathAccess,
            u"Program má v nastavení (ActDB) katalog %1 a obrázky ve složce %2, takovou dvojici příkaz "
            u"neumí. "
            "Zkopírujte oba soubory do jedné složky jako data.ddb a pictures.ddb a tu uveďte."_s.arg(
                QDir::toNativeSeparators(set.filePath()), QDir::toNativeSeparators(folder)));
    }
    return folder;
}

sqlite::Database dataFiles::openCatalogue(const QString& folder) {
    return open(cataloguePath(folder));
}

sqlite::Database dataFiles::openPictures(const QString& folder) {
    return open(picturesPath(folder));
}

QByteArray dataFiles::script(const QString& name) {
    QFile file(u":/data/"_s + name);
    if (!file.open(QFile::ReadOnly)) throw RuntimeError(errors::fileNotFound);
    return file.readAll();
}

void dataFiles::create(const QString& folder) {
    NewPair pair(folder);
    sqlite::Transaction transaction(pair.catalogue());
    pair.catalogue().exec(script(u"dictionaries.sql"_s).constData());
    transaction.commit();
    pair.keep();
}
