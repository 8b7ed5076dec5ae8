#pragma once

#include <QByteArray>
#include <QSet>
#include <chrono>

/// How long data files are waited for that another program has locked: 5 seconds by the clock, however long
/// the single steps take.
///
/// What the user asked for may open a file several times, as the film editor does. A file waited for in vain
/// is therefore not waited for again by what follows within a second; the time in which a box was open does
/// not count.
class LockPatience final {
 public:
    using Clock = std::chrono::steady_clock;

    /// That of the calling thread.
    static LockPatience& ofThread();

    /// Whether to try once more.
    /// @param tries how often this lock has been met before; 0 begins a new wait.
    bool lasts(const QByteArray& file, int tries, Clock::time_point now);

    /// Between these two, which may be nested, the program waits for its user, and forgets nothing.
    void pause(Clock::time_point now);
    void goOn(Clock::time_point now);

 private:
    void forgetFormer(Clock::time_point now);

    Clock::time_point begun_;
    QSet<QByteArray> lockedFiles_;  ///< waited for in vain
    Clock::time_point last_;        ///< end of the last wait in vain, or of the pause after it
    int pauses_ = 0;
};

/// A pause in the patience of the thread, for as long as it lives.
class LockPatiencePause final {
 public:
    LockPatiencePause() { LockPatience::ofThread().pause(LockPatience::Clock::now()); }
    ~LockPatiencePause() { LockPatience::ofThread().goOn(LockPatience::Clock::now()); }
    LockPatiencePause(const LockPatiencePause&) = delete;
    LockPatiencePause& operator=(const LockPatiencePause&) = delete;
};
