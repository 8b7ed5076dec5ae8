#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>

#include "support/TemporaryProgram.h"

/// A copy of the old pair that the tests know, in the folder `old`, for the program to take over into `new`.
class OldPair : public TemporaryProgram {
 protected:
    OldPair() {
        using namespace Qt::StringLiterals;
        QDir().mkpath(at(u"old"_s));
        for (const QString& name : {u"data.ddb"_s, u"pictures.ddb"_s})
            QFile::copy(QStringLiteral(KALVERA_OLD_PAIR "/") + name, at(u"old/"_s + name));
    }

    struct Result {
        int exitCode;
        QString output;
        QString errors;
    };

    /// Replaces bytes of an old file.
    void patch(const QString& path, const QByteArray& from, const QByteArray& to) const {
        QByteArray bytes = content(path);
        ASSERT_TRUE(bytes.contains(from)) << from.toStdString();
        QFile::remove(at(path));
        write(path, bytes.replace(from, to));
    }
    static QByteArray utf16(QStringView text) {
        return {reinterpret_cast<const char*>(text.utf16()), text.size() * 2};
    }
    /// What is in the test's folder, names below `path` included.
    QStringList names(const QString& path) const {
        return QDir(at(path)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                        QDir::NoDotAndDotDot);
    }

    /// Puts a script in place of one of mdbtools' programs for the runs that follow.
    void replaceProgram(const QString& name, const QByteArray& script) {
        using namespace Qt::StringLiterals;
        QDir().mkpath(at(u"bin"_s));
        write(u"bin/"_s + name, "#!/bin/sh\n" + script);
        QFile::setPermissions(at(u"bin/"_s + name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert(u"PATH"_s, at(u"bin:"_s) + qEnvironmentVariable("PATH"));
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
