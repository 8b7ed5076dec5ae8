#pragma once

#include <QProcess>
#include <QStringList>
#include <chrono>

/// What a program started by this one may use up.
struct ProgramLimits {
    std::chrono::milliseconds time{60000};  // that it is waited for, and of the processor
    qint64 memory = 512LL << 20;            // bytes of address space, 0 for no limit; not kept on Windows
};

/// A program whose output is read while it runs. It is ended when the object goes, and with this process.
class ChildProgram final {
 public:
    /// Starts the program; a failure to do so shows in `read`.
    ChildProgram(const QString& program, const QStringList& arguments, const ProgramLimits& limits);
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    /// Puts what it wrote next to standard output in place of what `bytes` holds.
    /// @return false at the end: then it has ended well.
    /// @throws RuntimeError when it could not be started, crashes, takes too long, writes anything to
    /// standard error or ends with another
    ///         exit code than 0, and when this process is asked to end.
    bool read(QByteArray& bytes);

    /// All that it has yet to write to standard output, at most 1 MB.
    /// @throws RuntimeError as `read` does.
    QByteArray readAll();

 private:
    void checkComplaints();
    [[noreturn]] void fail(const QString& what);

    QProcess process_;
    QString name_;
    std::chrono::steady_clock::duration timeLeft_;
};
