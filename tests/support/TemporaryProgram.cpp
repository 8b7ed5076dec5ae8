#include "support/TemporaryProgram.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSettings>

#include "core/mDatabase.h"
#include "datatool/DataFiles.h"
#include "platform/paths.h"

TemporaryProgram::TemporaryProgram() {
    QLocale::setDefault(QLocale(QLocale::Czech, QLocale::CzechRepublic));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       folder_.filePath(QStringLiteral("settings")));
    dataFiles::create(folder_.filePath(QStringLiteral("data")));
    paths::setProgramFolder(folder_.path());
    ActDBPath = catalogue();
    Err.Clear();
}

TemporaryProgram::~TemporaryProgram() {
    CloseDB();
    QLocale::setDefault(formerLocale_);
}

void TemporaryProgram::sql(const QString& file, const char* statements) {
    sqlite::Database(file, sqlite::Database::Mode::readWrite).exec(statements);
}

qint64 TemporaryProgram::number(const char* query) const {
    return sqlite::Database(catalogue(), sqlite::Database::Mode::readWrite).number(query);
}

QString TemporaryProgram::text(const QString& file, const char* query) {
    const sqlite::Database database(file, sqlite::Database::Mode::readWrite);
    const sqlite::Statement statement(database, query);
    if (!statement.step()) throw RuntimeError(errors::noCurrentRecord);
    return statement.text(0);
}

QByteArray TemporaryProgram::content(const QString& path) const {
    QFile file(at(path));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void TemporaryProgram::write(const QString& path, const QByteArray& bytes) const {
    QFile file(at(path));
    ASSERT_TRUE(file.open(QFile::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray TemporaryProgram::noise(qsizetype length) {
    QByteArray bytes;
    for (qsizetype block = length; bytes.size() < length; ++block)
        bytes += QCryptographicHash::hash(QByteArray::number(block), QCryptographicHash::Sha256);
    return bytes.first(length);
}

ado::Connection& TemporaryProgram::connection() {
    if (!connection_.isOpen()) connection_.Open(connectionString(catalogue()));
    return connection_;
}
