#include "support/VirtualScreen.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr int patience = 60000;  // milliseconds
}

VirtualScreen::VirtualScreen() {
    server_.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x1024x24"_s,
                              u"-nolisten"_s, u"tcp"_s});
    // The server writes the number of its display once it is ready.
    while (!server_.canReadLine() && server_.waitForReadyRead(patience)) {
    }
    const QString number = QString::fromLatin1(server_.readLine()).trimmed();
    if (!number.isEmpty()) display_ = u':' + number;
}

VirtualScreen::~VirtualScreen() {
    server_.terminate();
    server_.waitForFinished();
}

QProcessEnvironment VirtualScreen::environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, display_);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    environment.remove(u"QT_QPA_PLATFORM"_s);
    return environment;
}

std::unique_ptr<QProcess> VirtualScreen::start(const QString& program, const QString& home) const {
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment own = environment();
    own.insert(u"HOME"_s, home);
    own.insert(u"XDG_CONFIG_HOME"_s, home + u"/.config"_s);
    own.insert(u"XDG_DATA_HOME"_s, home + u"/.local/share"_s);
    process->setProcessEnvironment(own);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(program, QStringList());
    process->waitForStarted();
    return process;
}

QString VirtualScreen::xdotool(const QStringList& arguments, int milliseconds) const {
    QProcess tool;
    tool.setProcessEnvironment(environment());
    tool.start(u"xdotool"_s, arguments);
    if (!tool.waitForFinished(milliseconds)) tool.kill();
    tool.waitForFinished();
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

QString VirtualScreen::waitForWindow(const QString& title) const {
    QElapsedTimer waiting;
    waiting.start();
    QString window;
    // A search ends early when a window goes away under it.
    while (window.isEmpty() && waiting.elapsed() < patience) {
        window =
            xdotool({u"search"_s, u"--sync"_s, u"--onlyvisible"_s, u"--limit"_s, u"1"_s, u"--name"_s, title},
                    patience);
    }
    return window;
}

bool VirtualScreen::hasWindow(const QString& title) const {
    return !xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, title}).isEmpty();
}

void VirtualScreen::click(const QString& window, int x, int y, int button) const {
    // Waiting for a move that leads where the pointer is already takes for ever.
    xdotool({u"mousemove"_s, u"--window"_s, window, QString::number(x + 1), QString::number(y),
             u"mousemove"_s, u"--sync"_s, u"--window"_s, window, QString::number(x), QString::number(y),
             u"click"_s, QString::number(button)});
}

void VirtualScreen::drag(const QString& window, QPoint from, QPoint to) const {
    const auto moveTo = [&window](QPoint place) {
        return QStringList{u"mousemove"_s,
                           u"--sync"_s,
                           u"--window"_s,
                           window,
                           QString::number(place.x()),
                           QString::number(place.y())};
    };
    xdotool(moveTo(from) + QStringList{u"mousedown"_s, u"1"_s} + moveTo((from + to) / 2) + moveTo(to) +
            QStringList{u"mouseup"_s, u"1"_s});
}

void VirtualScreen::type(const QString& window, const QString& text) const {
    xdotool({u"windowfocus"_s, u"--sync"_s, window, u"type"_s, u"--delay"_s, u"25"_s, text});
}

bool VirtualScreen::waitForHeight(const QString& window, int height, int milliseconds) const {
    QElapsedTimer waiting;
    waiting.start();
    const QString wanted = u"HEIGHT=%1"_s.arg(height);
    while (!xdotool({u"getwindowgeometry"_s, u"--shell"_s, window}).contains(wanted)) {
        if (waiting.elapsed() > milliseconds) return false;
    }
    return true;
}

bool VirtualScreen::waitUntilGone(const QString& title) const {
    QElapsedTimer waiting;
    waiting.start();
    while (hasWindow(title)) {
        if (waiting.elapsed() > patience) return false;
    }
    return true;
}

void VirtualScreen::press(const QString& window, const QStringList& keys) const {
    xdotool(QStringList{u"windowfocus"_s, u"--sync"_s, window, u"key"_s, u"--delay"_s, u"60"_s} + keys);
}
