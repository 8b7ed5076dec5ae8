#include "platform/LockPatience.h"

bool LockPatience::lasts(const QByteArray& file, int tries, Clock::time_point now) {
    constexpr std::chrono::seconds most{5};
    constexpr std::chrono::seconds remembered{1};
    if (tries == 0) {
        if (file == lockedFile_ && now - lockedAt_ < remembered) return false;
        begun_ = now;
    }
    if (now - begun_ < most) return true;
    lockedFile_ = file;
    lockedAt_ = now;
    return false;
}
