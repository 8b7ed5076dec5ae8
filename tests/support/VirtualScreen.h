#pragma once

#include <QPoint>
#include <QProcess>
#include <QStringList>
#include <memory>

/// An X server without a screen, for as long as it lives, and the hands and eyes of somebody in front of it.
/// No window manager runs on it, so a window has the keyboard only once it has been given it.
class VirtualScreen final {
 public:
    VirtualScreen();
    ~VirtualScreen();
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    bool isUp() const { return !display_.isEmpty(); }

    /// Starts a program on the screen, with a home of its own in `home`.
    std::unique_ptr<QProcess> start(const QString& program, const QString& home) const;

    /// Waits for a visible window whose title matches a regular expression.
    /// @return its number; "" when none came within a minute.
    QString waitForWindow(const QString& title) const;
    /// Whether such a window is visible now.
    bool hasWindow(const QString& title) const;
    /// Gives a window the keyboard and presses keys, each as xdotool names them.
    void press(const QString& window, const QStringList& keys) const;
    /// Clicks at a place in a window, in pixels from its corner.
    void click(const QString& window, int x, int y, int button = 1) const;
    /// Presses the left button at one place, moves to another and releases it.
    void drag(const QString& window, QPoint from, QPoint to) const;
    /// Types a text into whatever has the keyboard in a window.
    void type(const QString& window, const QString& text) const;
    /// Waits until a window has a height. @return false when it has another one after that time.
    bool waitForHeight(const QString& window, int height, int milliseconds = 60000) const;
    /// Waits until no window with such a title is visible. @return false when one still is after a minute.
    bool waitUntilGone(const QString& title) const;

 private:
    QString xdotool(const QStringList& arguments, int milliseconds = 30000) const;
    QProcessEnvironment environment() const;

    QProcess server_;
    QString display_;
};
