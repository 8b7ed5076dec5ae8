#include "platform/LockPatience.h"

LockPatience& LockPatience::ofThread() {
    thread_local LockPatience patience;
    return patience;
}

bool LockPatience::lasts(const QByteArray& file, int tries, Clock::time_point now) {
    constexpr std::chrono::seconds most{5};
    if (tries == 0) {
        forgetFormer(now);
        if (lockedFiles_.contains(file)) return false;
        begun_ = now;
    }
    if (now - begun_ < most) return true;
    lockedFiles_ += file;
    last_ = now;
    return false;
}

void LockPatience::pause(Clock::time_point now) {
    forgetFormer(now);
    ++pauses_;
}

void LockPatience::goOn(Clock::time_point now) {
    --pauses_;
    last_ = now;
}

void LockPatience::forgetFormer(Clock::time_point now) {
    constexpr std::chrono::seconds remembered{1};
    if (pauses_ == 0 && now - last_ >= remembered) lockedFiles_.clear();
}
