#pragma once

#include <QObject>

/// The state of Caps Lock and Num Lock. On X11 it is the keyboard's indicators; elsewhere it starts as off
/// and follows the presses that the program sees.
class LockKeys final : public QObject {
    Q_OBJECT

 public:
    /// Watches the key presses of the whole program.
    explicit LockKeys(QObject* parent);

    bool capsLock() const noexcept { return capsLock_; }
    bool numLock() const noexcept { return numLock_; }

    /// Looks at the keyboard anew, as locks also change while another program has the focus.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
    void changed();

 private:
    void set(bool capsLock, bool numLock);

    bool capsLock_ = false;
    bool numLock_ = false;
};
