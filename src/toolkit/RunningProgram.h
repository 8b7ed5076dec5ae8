#pragma once

#include <QLocalServer>

/// Lets a second start of the program reach the one already running for the same user and data folder,
/// through a local socket.
class RunningProgram final : public QObject {
    Q_OBJECT

 public:
    /// Listens for other starts on `folder`. Only the holder of the folder's lock may do that.
    explicit RunningProgram(const QString& folder);

    /// Asks the program that listens on `folder` to bring its window to the front.
    /// @return false when none has answered within a few seconds.
    static bool callToFront(const QString& folder);

 private:
    void answer();

    QLocalServer server_;
};
