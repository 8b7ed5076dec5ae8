#pragma once

#include <QFile>
#include <QSettings>

#include "support/TemporaryProgram.h"
#include "support/VirtualScreen.h"

/// The real program in a folder of its own.
class RealProgram : public TemporaryProgram {
 protected:
    void SetUp() override {
        ASSERT_TRUE(screen.isUp());
        ASSERT_TRUE(QFile::copy(QStringLiteral(KALVERA), folder() + QStringLiteral("/kalvera")));
    }

    /// Starts the program and ends its splash picture. It does not ask for newer versions unless a test
    /// wants it to.
    std::unique_ptr<QProcess> start() const { return start(folder() + QStringLiteral("/kalvera")); }
    std::unique_ptr<QProcess> start(const QString& executable) const {
        if (!settings().contains(QStringLiteral("Settings/ShowNewVer")))
            settings().setValue(QStringLiteral("Settings/ShowNewVer"), QStringLiteral("N"));
        auto program = screen.start(executable, folder());
        screen.press(screen.waitForWindow(splash), {QStringLiteral("space")});
        return program;
    }

    QSettings settings() const {
        return {folder() + QStringLiteral("/.config/BremDVDKalvera.conf"), QSettings::IniFormat};
    }

    static void expectEnd(QProcess& program, int exitCode) {
        ASSERT_TRUE(program.waitForFinished(60000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), exitCode);
    }

    VirtualScreen screen;
    const QString splash = QStringLiteral("^Brem DVD Kalv.*ra$");
    const QString mainWindow = QStringLiteral("^Brem DVD Kalv.*1\\.0\\.23$");
};
