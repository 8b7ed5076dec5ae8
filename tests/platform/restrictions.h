#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

/// Drops root's rights while it lives, as file permissions do not stop root.
class OrdinaryUser final {
 public:
    OrdinaryUser() { EXPECT_EQ(root_ ? setresuid(65534, 65534, 0) : 0, 0); }
    ~OrdinaryUser() { EXPECT_EQ(root_ ? setresuid(0, 0, 0) : 0, 0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
    const bool root_ = geteuid() == 0;
};

/// Lets writes beyond `bytes` of a file fail, as on a full disk, while `work` runs.
template <typename Work>
void onFullDisk(rlim_t bytes, Work&& work) {
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit tight{bytes, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tight);
    work();
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
}
