#pragma once

#include <QObject>

/// The state of Caps Lock and Num Lock. On X11 it is read from the keyboard's indicators; elsewhere it is
/// assumed to be off at first and follows the key presses that the application receives.
class LockKeys final : public QObject {
    Q_OBJECT

 public:
    /// Watches key presses of the whole application.
    explicit LockKeys(QObject* parent);

    bool capsLock() const noexcept { return capsLock_; }
    bool numLock() const noexcept { return numLock_; }

    /// Reads the indicators again, which can change while another application has the focus.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
    void changed();

 private:
    void set(bool capsLock, bool numLock);

    bool capsLock_ = false;
    bool numLock_ = false;
};
