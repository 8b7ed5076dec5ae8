#pragma once

#include <QObject>
#include <optional>

class QKeyEvent;

/// The state of Caps Lock and Num Lock, as far as the system tells it.
class LockKeys final : public QObject {
    Q_OBJECT

 public:
    enum class Source {
        indicators,  ///< the keyboard's indicators, at any time: X11
        keyEvents,   ///< the modifiers that each key event carries, while the application is active: Wayland
        presses      ///< the presses of both keys, from unlocked at the start: other systems
    };
    /// The best source that the platform has.
    static Source usualSource();

    explicit LockKeys(QObject* parent, Source source = usualSource());

    /// Whether the key is locked; nothing while that is not known.
    std::optional<bool> capsLock() const noexcept { return capsLock_; }
    std::optional<bool> numLock() const noexcept { return numLock_; }

    /// Reads the indicators again, which can change while another application has the focus.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
    void changed();

 private:
    void follow(const QKeyEvent& event);
    void set(std::optional<bool> capsLock, std::optional<bool> numLock);

    Source source_;
    std::optional<bool> capsLock_;
    std::optional<bool> numLock_;
};
