#pragma once

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>

#include "support/TemporaryProgram.h"

/// A copy of the old pair of the tests in the folder `old`, and the program that imports it to `new`.
class OldPair : public TemporaryProgram {
 protected:
    OldPair() {
        QDir().mkpath(at(u"old"_s));
        for (const QString& name : {u"data.ddb"_s, u"pictures.ddb"_s})
            QFile::copy(QStringLiteral(KALVERA_OLD_PAIR "/") + name, at(u"old/"_s + name));
    }

    struct Result {
        int exitCode;
        QString output;
        QString errors;
    };

    /// Replaces bytes of a file.
    void patch(const QString& path, const QByteArray& from, const QByteArray& to) const {
        QByteArray bytes = content(path);
        ASSERT_TRUE(bytes.contains(from)) << from.toStdString();
        write(path, bytes.replace(from, to));
    }
    static QByteArray utf16(QStringView text) {
        return {reinterpret_cast<const char*>(text.utf16()), text.size() * 2};
    }
    /// What the failure of `work` tells.
    static QString descriptionOf(const std::function<void()>& work) {
        try {
            work();
        } catch (const RuntimeError& failure) {
            return failure.description();
        }
        return QStringLiteral("none");
    }
    /// Lets every user read all there is, and write nothing.
    void makeReadOnly() const {
        const auto all = QFile::ReadOwner | QFile::ReadUser | QFile::ReadGroup | QFile::ReadOther;
        const auto enter = QFile::ExeOwner | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther;
        QFile::setPermissions(folder(), all | enter);
        for (QDirIterator each(folder(), QDir::AllEntries | QDir::NoDotAndDotDot,
                               QDirIterator::Subdirectories);
             each.hasNext();) {
            each.next();
            QFile::setPermissions(each.filePath(), each.fileInfo().isDir() ? all | enter : all);
        }
    }
    QStringList names(const QString& path) const {
        return QDir(at(path)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                        QDir::NoDotAndDotDot);
    }
    Result run(const QStringList& arguments, const std::function<void()>& inChild = {}) const {
        QProcess program;
        program.setProcessEnvironment(environment);
        if (inChild) program.setChildProcessModifier(inChild);
        program.start(QStringLiteral(KALVERA_DATA), arguments);
        EXPECT_TRUE(program.waitForFinished() && program.exitStatus() == QProcess::NormalExit);
        return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
                QString::fromUtf8(program.readAllStandardError())};
    }
    Result runImport() const {
        return run({QStringLiteral("import"), at(QStringLiteral("old")), at(QStringLiteral("new"))});
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};
