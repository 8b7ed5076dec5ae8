#include "platform/FolderLock.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>

#include "platform/index.h"

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

using namespace Qt::StringLiterals;

namespace {

QString userName() {
#ifdef Q_OS_WIN
    return qEnvironmentVariable("USERNAME");
#else
    // Not every way of starting a program sets USER, and after su it may be another one's.
    const passwd* user = getpwuid(geteuid());
    return user != nullptr ? QFile::decodeName(user->pw_name) : QString::number(geteuid());
#endif
}

QByteArray thisUser() {
    return u"%1 na počítači %2"_s.arg(userName(), QSysInfo::machineHostName()).toUtf8();
}

QString readHolder(const QString& path) {
    constexpr qint64 longest = 200;
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.read(longest)) : QString();
}

}  // namespace

FolderLock::FolderLock(const QString& folder) : path_(QDir(folder).filePath(u"kalvera.lock"_s)) {
    // A program that is just ending may remove the file after it was opened here and before it is locked.
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts && !lock(); ++attempt) {
    }
    if (taken_) holder_ = readHolder(path_);
}

FolderLock::~FolderLock() {
    release();
}

#ifdef Q_OS_WIN

bool FolderLock::lock() {
    handle_ =
        CreateFileW(reinterpret_cast<const wchar_t*>(QDir::toNativeSeparators(path_).utf16()), GENERIC_WRITE,
                    FILE_SHARE_READ, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    taken_ = handle_ == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION;
    if (handle_ == INVALID_HANDLE_VALUE) return true;
    const QByteArray user = thisUser();
    DWORD written = 0;
    WriteFile(handle_, user.constData(), static_cast<DWORD>(user.size()), &written, nullptr);
    return true;
}

void FolderLock::release() {
    if (handle_ == INVALID_HANDLE_VALUE) return;
    CloseHandle(handle_);
    QFile::remove(path_);
}

#else

/// @return false when the file was removed or replaced before it was locked; try again then.
bool FolderLock::lock() {
    const QByteArray name = QFile::encodeName(path_);
    handle_ = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    // The file may belong to another user whose program was killed.
    if (handle_ < 0) handle_ = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
    if (handle_ < 0) return true;
    if (flock(handle_, LOCK_EX | LOCK_NB) != 0) {
        taken_ = errno == EWOULDBLOCK;
        ::close(handle_);
        handle_ = -1;
        return true;
    }
    struct stat locked {};
    struct stat named {};
    if (fstat(handle_, &locked) != 0 || ::stat(name.constData(), &named) != 0 ||
        locked.st_ino != named.st_ino) {
        ::close(handle_);
        handle_ = -1;
        return false;
    }
    const QByteArray user = thisUser();
    // The lock holds even if the name cannot be written.
    if (ftruncate(handle_, 0) == 0 && ::write(handle_, user.constData(), toSize(user.size())) < 0)
        qWarning("The holder of the data folder cannot be written.");
    return true;
}

void FolderLock::release() {
    if (handle_ < 0) return;
    ::unlink(QFile::encodeName(path_).constData());
    ::close(handle_);
}

#endif
