#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QLocale>
#include <QTemporaryDir>

#include "platform/ado.h"
#include "platform/sqlite.h"
#include "support/ScriptedOutside.h"
#include "support/printers.h"

/// A program folder of its own with a fresh pair of data files, empty settings, the Czech locale, no pending
/// failure, and a scripted outside. `ActDBPath` names the catalogue.
class TemporaryProgram : public testing::Test {
 public:
    TemporaryProgram(const TemporaryProgram&) = delete;
    TemporaryProgram& operator=(const TemporaryProgram&) = delete;

 protected:
    TemporaryProgram();
    ~TemporaryProgram() override;

    QString folder() const { return folder_.path(); }
    QString at(const QString& path) const { return QDir(folder()).filePath(path); }
    QString catalogue() const { return folder_.filePath(QStringLiteral("data/data.ddb")); }
    QString pictures() const { return folder_.filePath(QStringLiteral("data/pictures.ddb")); }

    /// Runs statements on a data file past the program, as another program would.
    static void sql(const QString& file, const char* statements);
    void sql(const char* statements) const { sql(catalogue(), statements); }
    /// The first column of a query's first row.
    qint64 number(const char* query) const;
    static QString text(const QString& file, const char* query);
    QString text(const char* query) const { return text(catalogue(), query); }

    /// The bytes of a file, by its path below the folder or its full one.
    QByteArray content(const QString& path) const;
    void write(const QString& path, const QByteArray& bytes) const;
    /// Bytes that repeat nowhere near, so that a piece in the wrong place shows.
    static QByteArray noise(qsizetype length);

    /// An open connection to the catalogue, through the program's own layer.
    ado::Connection& connection();

    ScriptedOutside outside;

 private:
    QTemporaryDir folder_;
    ado::Connection connection_;
    QLocale formerLocale_;
};

/// The number of the failure that `statement` throws; 0 when it throws none.
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
