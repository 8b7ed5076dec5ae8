#pragma once

#include <QDir>
#include <QTest>

#include "support/WebServer.h"
#include "system/RealProgram.h"

/// The real program on a desktop whose program for web pages tells what it shows, without a printer.
class DesktopProgram : public RealProgram {
 public:
    DesktopProgram(const DesktopProgram&) = delete;
    DesktopProgram& operator=(const DesktopProgram&) = delete;

 protected:
    DesktopProgram() {
        qputenv("CUPS_SERVER", "/nonexistent/printers");
        qputenv("http_proxy", web.root().toUtf8());
        qputenv("PATH", (folder() + QStringLiteral("/bin:")).toUtf8() + path);
        QDir(folder()).mkdir(QStringLiteral("bin"));
        QFile desktop(folder() + QStringLiteral("/bin/xdg-open"));
        if (desktop.open(QFile::WriteOnly)) {
            desktop.write((QStringLiteral("#!/bin/sh\nASAN_OPTIONS=detect_leaks=0 exec " PAGE_READER
                                          " \"$1\" '%1/seen'\n")
                               .arg(folder()))
                              .toUtf8());
            desktop.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
    }
    ~DesktopProgram() override {
        qputenv("PATH", path);
        qunsetenv("http_proxy");
        qunsetenv("CUPS_SERVER");
    }

    /// Waits for what the desktop's program shows.
    QString seen() const {
        QFile file(folder() + QStringLiteral("/seen"));
        if (!QTest::qWaitFor([&file] { return file.exists(); }, 60000)) return QStringLiteral("(nothing)");
        QString text = file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        file.remove();
        return text;
    }

    const QByteArray path = qgetenv("PATH");
    WebServer web;
};
