#pragma once

#include <QString>

/// The right to be the only program with a window on a data folder: scratch files there have fixed names. The
/// system itself takes it back when the program ends, in whatever way, so nobody is blocked by one that was
/// killed. Works across users and, on shared folders that know locks, across machines.
class FolderLock final {
 public:
    /// Takes the lock of `folder` if it is free. A folder that cannot be locked, such as a read-only one,
    /// counts as free.
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// True when another program holds the folder.
    bool isTaken() const noexcept { return taken_; }
    /// Who holds a taken folder, such as "jana na počítači sklep"; "" when that cannot be read.
    const QString& holder() const noexcept { return holder_; }

 private:
    bool lock();
    void release();

    const QString path_;
    QString holder_;
    bool taken_ = false;
#ifdef Q_OS_WIN
    void* handle_;
#else
    int handle_ = -1;
#endif
};
