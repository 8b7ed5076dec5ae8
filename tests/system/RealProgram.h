#pragma once

#include <QRegularExpression>
#include <QSettings>

#include "core/Sites.h"
#include "core/mVerze.h"
#include "support/TemporaryProgram.h"
#include "support/VirtualScreen.h"
#include "support/WebServer.h"

/// The real program in its own folder and home, with a proxy in place of the web and without printers, on a
/// VirtualScreen or WaylandScreen.
template <typename Screen>
class RealProgramOn : public TemporaryProgram {
 protected:
    RealProgramOn() {
        screen.environment.insert(u"HOME"_s, folder());
        screen.environment.insert(u"XDG_CONFIG_HOME"_s, at(u".config"_s));
        screen.environment.insert(u"XDG_DATA_HOME"_s, at(u".local/share"_s));
        screen.environment.insert(u"CUPS_SERVER"_s, u"/nonexistent/printers"_s);
        screen.environment.insert(u"http_proxy"_s, web.root());
        settings().setValue(u"Settings/ShowNewVer"_s, u"N"_s);
        QFile::copy(QStringLiteral(KALVERA), at(u"kalvera"_s));
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }

    /// Starts the program and skips its splash screen, by a key unless it is to end by itself.
    void start(const QString& executable = u"kalvera"_s, bool key = true) {
        screen.giveAway(folder());
        screen.start(program, at(executable));
        if (key) screen.press(screen.waitForWindow(splash), u"space"_s);
    }
    void expectEnd(int exitCode) {
        VirtualScreen::expect([this] { return program.state() == QProcess::NotRunning; }, u"the end"_s);
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), exitCode);
    }
    /// Ends the program by its menu.
    void leave() {
        screen.press(screen.waitForWindow(mainWindow), u"alt+d k"_s);
        expectEnd(0);
    }

    /// The settings of the program, as written so far.
    QSettings settings() const { return {at(u".config/BremDVDKalvera.conf"_s), QSettings::IniFormat}; }
    const Sites sites = Sites::compiledIn();
    WebServer web;
    Screen screen;
    QProcess program;
    const QString splash = u"^Brem DVD Kalv.*ra$"_s;
    const QString mainWindow = u"^Brem DVD Kalv.*"_s + QRegularExpression::escape(verze::text()) + u'$';
    const QString editorWindow = u"^DVD Film$"_s;
};

using RealProgram = RealProgramOn<VirtualScreen>;
