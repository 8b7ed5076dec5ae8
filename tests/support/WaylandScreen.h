#pragma once

#include <unistd.h>

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include "support/VirtualScreen.h"

/// A Wayland compositor without a display: sway, driven by swaymsg, wtype and grim. As it refuses to run for
/// root, a test run by root hands itself and the program over to the user "nobody". Titles are regular
/// expressions; what does not happen in time throws, as with VirtualScreen.
class WaylandScreen final {
 public:
    WaylandScreen() {
        giveAway(run_.path());
        environment.remove(u"DISPLAY"_s);
        environment.remove(u"QT_QPA_PLATFORM"_s);
        const std::pair<QString, QString> variables[] = {
            {u"XDG_RUNTIME_DIR"_s, run_.path()},    {u"XDG_SESSION_TYPE"_s, u"wayland"_s},
            {u"WAYLAND_DISPLAY"_s, u"wayland-1"_s}, {u"SWAYSOCK"_s, run_.filePath(u"sway"_s)},
            {u"WLR_BACKENDS"_s, u"headless"_s},     {u"WLR_LIBINPUT_NO_DEVICES"_s, u"1"_s},
            {u"WLR_RENDERER"_s, u"pixman"_s},       {u"LC_ALL"_s, u"C.UTF-8"_s}};
        for (const auto& [name, value] : variables)
            environment.insert(name, value);
        QFile settings(run_.filePath(u"config"_s));
        if (!settings.open(QFile::WriteOnly)) throw std::runtime_error("config");
        settings.write("xwayland disable\noutput * resolution 1280x1024\n");
        settings.close();
        giveAway(settings.fileName());
        start(server_, u"sway"_s, {u"--config"_s, settings.fileName()});
        VirtualScreen::expect([this] { return !tree().isEmpty(); }, u"sway"_s);
        // Each wtype is a keyboard of its own. This one stays, so that the seat never loses its only one, and
        // with it the focus.
        start(keyboard_, u"wtype"_s, {u"-s"_s, u"3600000"_s});
        VirtualScreen::expect([this] { return swaymsg(u"get_inputs"_s).contains("keyboard"); }, u"wtype"_s);
    }
    ~WaylandScreen() {
        for (QProcess* process : {&keyboard_, &server_}) {
            process->terminate();
            process->waitForFinished();
        }
    }
    WaylandScreen(const WaylandScreen&) = delete;
    WaylandScreen& operator=(const WaylandScreen&) = delete;

    /// Starts a program on the screen.
    void start(QProcess& process, const QString& program, const QStringList& arguments = {}) const {
        process.setProcessEnvironment(environment);
        QStringList command;
        if (geteuid() == 0)
            command = u"setpriv --reuid=nobody --regid=nogroup --clear-groups --"_s.split(u' ');
        command += program;
        command += arguments;
        process.start(command.takeFirst(), command);
    }
    /// Makes a file or folder, with all in it, the program's own.
    static void giveAway(const QString& path) {
        if (geteuid() == 0 && QProcess::execute(u"chown"_s, {u"-R"_s, u"nobody:nogroup"_s, path}) != 0)
            throw std::runtime_error(path.toStdString());
    }

    /// Waits until the window with a title has the focus. @return its title.
    QString waitForWindow(const QString& title) const {
        VirtualScreen::expect([&] { return find(title).value(u"focused"_s).toBool(); }, title);
        return find(title).value(u"name"_s).toString();
    }
    /// Gives the window with a title the focus, as a click on its frame would.
    void activate(const QString& title) const {
        run(u"swaymsg"_s, {u"[title=\"%1\"] focus"_s.arg(title)});
        waitForWindow(title);
    }
    void waitUntilGone(const QString& title) const {
        VirtualScreen::expect([&] { return find(title).isEmpty(); }, title);
    }
    /// What the compositor knows about the window with a title.
    QJsonObject find(const QString& title) const { return find(tree(), QRegularExpression(title)); }

    /// Presses keys in the window with the focus, named as in VirtualScreen::press.
    void press(const QString& /*window*/, const QString& keys) const {
        QStringList arguments;
        for (const QString& key : keys.split(u' ')) {
            QStringList names = key.split(u'+');
            const QString last = names.takeLast();
            for (const QString& modifier : names)
                arguments += {u"-M"_s, modifier};
            arguments += {u"-k"_s, last};
            for (const QString& modifier : names)
                arguments += {u"-m"_s, modifier};
        }
        run(u"wtype"_s, arguments);
    }
    void type(const QString& /*window*/, const QString& text) const { run(u"wtype"_s, {text}); }
    /// The number of different colours in a line of the picture, in pixels from the top.
    qsizetype coloursAcross(int y) const {
        const QImage picture = QImage::fromData(run(u"grim"_s, {u"-t"_s, u"ppm"_s, u"-"_s}));
        QSet<QRgb> colours;
        for (int x = 0; x < picture.width(); ++x)
            colours += picture.pixel(x, y);
        return colours.size();
    }

    /// For programs that are to run on the screen.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

 private:
    QByteArray run(const QString& program, const QStringList& arguments) const {
        QProcess tool;
        start(tool, program, arguments);
        VirtualScreen::expect([&tool] { return tool.state() == QProcess::NotRunning; }, program);
        return tool.readAllStandardOutput();
    }
    QByteArray swaymsg(const QString& question) const {
        return run(u"swaymsg"_s, {u"--raw"_s, u"--type"_s, question});
    }
    QJsonObject tree() const { return QJsonDocument::fromJson(swaymsg(u"get_tree"_s)).object(); }
    static QJsonObject find(const QJsonObject& node, const QRegularExpression& title) {
        if (node.contains(u"app_id"_s) && node.value(u"name"_s).toString().contains(title)) return node;
        for (const QString& kind : {u"nodes"_s, u"floating_nodes"_s}) {
            for (const auto& child : node.value(kind).toArray()) {
                if (const QJsonObject found = find(child.toObject(), title); !found.isEmpty()) return found;
            }
        }
        return {};
    }

    QTemporaryDir run_;
    QProcess server_;
    QProcess keyboard_;
};
