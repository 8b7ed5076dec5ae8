#pragma once

#include <QString>

/// The lock that keeps a second program off a data folder, whose scratch files have fixed names. The system
/// releases it however the program ends, so a killed program blocks nobody. It works across users and, on
/// network folders that support locks, across machines.
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
    /// The holder of a taken folder, such as "jana na počítači sklep"; "" when that cannot be read.
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
