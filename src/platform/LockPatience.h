#pragma once

#include <QByteArray>
#include <chrono>

/// How long a data file is waited for that another program has locked.
///
/// 5 seconds by the clock, however long the single steps take. What the user asked for may open the file
/// several times, as the film editor does: right after a wait in vain it is not waited for again.
class LockPatience final {
 public:
    using Clock = std::chrono::steady_clock;

    /// Whether to try once more.
    /// @param tries how often this lock has been met before; 0 begins a new wait.
    bool lasts(const QByteArray& file, int tries, Clock::time_point now);

 private:
    Clock::time_point begun_;
    QByteArray lockedFile_;  ///< waited for in vain
    Clock::time_point lockedAt_;
};
