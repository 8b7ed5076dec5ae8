#include "datatool/DataFiles.h"

#include <QDir>
#include <QFile>

#include "core/mDatabase.h"
#include "datatool/NewPair.h"
#include "platform/errors.h"
#include "platform/password.h"

using namespace Qt::StringLiterals;

QString dataFiles::cataloguePath(const QString& folder) {
    return QDir(folder).filePath(u"data.ddb"_s);
}

QString dataFiles::picturesPath(const QString& folder) {
    return QDir(folder).filePath(u"pictures.ddb"_s);
}

sqlite::Database dataFiles::openCatalogue(const QString& folder) {
    const QString path = cataloguePath(folder);
    try {
        sqlite::Database database(path, sqlite::Database::Mode::readWrite);
        password::checkHeader(database, databasePassword());
        database.syncEveryCommit();
        return database;
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number(), u"%1 (%2)"_s.arg(failure.description(), path));
    }
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
