#pragma once

#include <QLocalServer>

/// The way by which a second start of the program reaches the first one of the same user and data folder.
class RunningProgram final : public QObject {
    Q_OBJECT

 public:
    /// Listens for other starts on `folder`. Only the holder of the folder's lock may do that.
    explicit RunningProgram(const QString& folder);

    /// Has the program that listens on `folder` bring its window to the front.
    /// @return false when none has answered within a few seconds.
    static bool callToFront(const QString& folder);

 private:
    void answer();

    QLocalServer server_;
};
