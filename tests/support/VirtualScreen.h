#pragma once

#include <QProcess>
#include <QStringList>
#include <QTest>
#include <stdexcept>

using namespace Qt::StringLiterals;

/// An X server without a display, driven by xdotool. No window manager runs on it, so a window has the
/// keyboard focus only once it was given. Titles are regular expressions. Whatever does not happen within a
/// minute throws std::runtime_error, which fails the test.
class VirtualScreen final {
 public:
    VirtualScreen() {
        server_.start(u"Xvfb"_s, u"-displayfd 1 -screen 0 1280x1024x24 -nolisten tcp -noreset"_s.split(u' '));
        // The number of the display is written once the server is ready. It must not reset when its last
        // client leaves.
        expect([this] { return server_.canReadLine(); }, u"Xvfb"_s);
        environment.insert(u"DISPLAY"_s, u':' + QString::fromLatin1(server_.readLine()).trimmed());
        environment.remove(u"WAYLAND_DISPLAY"_s);
        environment.remove(u"QT_QPA_PLATFORM"_s);
    }
    ~VirtualScreen() {
        server_.terminate();
        server_.waitForFinished();
    }
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    /// Starts a program on the screen.
    void start(QProcess& process, const QString& program) const {
        process.setProcessEnvironment(environment);
        process.start(program, QStringList());
    }
    /// Makes a folder the program's own, which here runs as the test does.
    static void giveAway(const QString& /*path*/) {}

    /// @return the number of the visible window with a title.
    QString waitForWindow(const QString& title) const {
        QString window;
        expect([&] { return !(window = find(title)).isEmpty(); }, title);
        return window;
    }
    void waitUntilGone(const QString& title) const {
        expect([&] { return find(title).isEmpty(); }, title);
    }
    bool hasHeight(const QString& window, int height) const {
        return xdotool({u"getwindowgeometry"_s, u"--shell"_s, window}).contains(u"HEIGHT=%1"_s.arg(height));
    }

    /// Gives a window the focus and presses keys, named as in xdotool.
    void press(const QString& window, const QString& keys) const {
        xdotool(u"windowfocus --sync %1 key --delay 60 %2"_s.arg(window, keys).split(u' '));
    }
    void type(const QString& window, const QString& text) const {
        xdotool(u"windowfocus --sync %1 type --delay 25"_s.arg(window).split(u' ') + QStringList(text));
    }
    /// Clicks in a window, in pixels from its corner.
    void click(const QString& window, int x, int y) const {
        // A move to where the pointer already is would wait forever.
        xdotool(u"mousemove --window %1 %2 %3 mousemove --sync --window %1 %4 %3 click 1"_s.arg(window)
                    .arg(x + 1)
                    .arg(y)
                    .arg(x)
                    .split(u' '));
    }

    /// For programs that are to run on the screen.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

    template <typename Condition>
    static void expect(Condition&& condition, const QString& what) {
        if (!QTest::qWaitFor(condition, 60000)) throw std::runtime_error(what.toStdString());
    }

 private:
    QString find(const QString& title) const {
        return xdotool({u"search"_s, u"--onlyvisible"_s, u"--limit"_s, u"1"_s, u"--name"_s, title});
    }
    QString xdotool(const QStringList& arguments) const {
        QProcess tool;
        tool.setProcessEnvironment(environment);
        tool.start(u"xdotool"_s, arguments);
        expect([&tool] { return tool.state() == QProcess::NotRunning; }, u"xdotool"_s);  // web servers go on
        return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
    }

    QProcess server_;
};
