#pragma once

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>

#include "core/mDatabase.h"
#include "datatool/DataFiles.h"
#include "platform/ado.h"
#include "platform/paths.h"
#include "platform/sqlite.h"
#include "support/ScriptedOutside.h"
#include "support/conversions.h"

// For all tests that use the fixture.
using namespace Qt::StringLiterals;

/// A temporary program folder with new data files, empty settings, the Czech locale, no pending failure and a
/// scripted outside world. `ActDBPath` names the catalogue.
class TemporaryProgram : public testing::Test {
 public:
    TemporaryProgram(const TemporaryProgram&) = delete;
    TemporaryProgram& operator=(const TemporaryProgram&) = delete;

 protected:
    TemporaryProgram() {
        QLocale::setDefault(QLocale(QLocale::Czech, QLocale::CzechRepublic));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, at(u"settings"_s));
        dataFiles::create(at(u"data"_s));
        paths::setProgramFolder(folder());
        ActDBPath = catalogue();
        Err.Clear();
    }
    ~TemporaryProgram() override {
        EXPECT_EQ(outside.told(), u""_s);  // boxes that the test did not expect
        CloseDB();
        QLocale::setDefault(formerLocale_);
    }

    QString folder() const { return folder_.path(); }
    QString at(const QString& path) const { return QDir(folder()).filePath(path); }
    QString catalogue() const { return at(u"data/data.ddb"_s); }
    QString pictures() const { return at(u"data/pictures.ddb"_s); }

    /// Runs statements on a data file directly.
    static void sql(const QString& file, const QByteArray& statements) {
        open(file).exec(statements.constData());
    }
    void sql(const char* statements) const { sql(catalogue(), statements); }
    /// Makes writes of rows fail for which `condition` holds.
    static void refuse(const QString& file, const QByteArray& table, const QByteArray& condition) {
        sql(file, "CREATE INDEX refuse_" + table + " ON " + table + " (CASE WHEN " + condition +
                      " THEN abs(-9223372036854775807 - 1) END)");
    }
    /// The first column of a query's first row.
    qint64 number(const char* query) const { return open(catalogue()).number(query); }
    static QString text(const QString& file, const char* query) {
        const sqlite::Database database = open(file);
        const sqlite::Statement statement(database, query);
        if (!statement.step()) throw RuntimeError(errors::noCurrentRecord);
        return statement.text(0);
    }
    QString text(const char* query) const { return text(catalogue(), query); }

    /// The bytes of a file by its path, absolute or below the folder; "no file" when it cannot be read.
    QByteArray content(const QString& path) const {
        QFile file(at(path));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    void write(const QString& path, const QByteArray& bytes) const {
        QFile file(at(path));
        ASSERT_TRUE(file.open(QFile::WriteOnly)) << path.toStdString();
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    /// Bytes without a short period, so that a misplaced piece shows.
    static QByteArray noise(qsizetype length) {
        QByteArray bytes;
        for (qsizetype block = length; bytes.size() < length; ++block)
            bytes += QCryptographicHash::hash(QByteArray::number(block), QCryptographicHash::Sha256);
        return bytes.first(length);
    }

    /// An open connection to the catalogue.
    ado::Connection& connection() {
        if (!connection_.isOpen()) connection_.Open(connectionString(catalogue()));
        return connection_;
    }

    ScriptedOutside outside;

 private:
    static sqlite::Database open(const QString& file) { return {file, sqlite::Database::Mode::readWrite}; }

    QTemporaryDir folder_;
    ado::Connection connection_;
    QLocale formerLocale_;
};

/// The number of the RuntimeError that `statement` throws; 0 when it throws none.
template <typename Statement>
qint32 failureOf(Statement&& statement) {
    try {
        statement();
    } catch (const RuntimeError& failure) {
        EXPECT_FALSE(failure.description().isEmpty());
        return failure.number();
    }
    return 0;
}
