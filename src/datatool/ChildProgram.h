#pragma once

#include <QProcess>
#include <QStringList>
#include <chrono>

/// Limits of a child program.
struct ProgramLimits {
    std::chrono::milliseconds time{60000};  // of waiting, and of the processor
    qint64 memory = 512LL << 20;            // bytes of address space, 0 for no limit; not enforced on Windows
};

/// A program whose output is read while it runs. It is killed with the object and with this process.
class ChildProgram final {
 public:
    /// Starts the program; `read` throws if that fails.
    ChildProgram(const QString& program, const QStringList& arguments, const ProgramLimits& limits);
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    /// Replaces `bytes` by the next piece of standard output.
    /// @return false at the end, once the program has exited with code 0.
    /// @throws RuntimeError when it cannot be started, crashes, takes too long, writes anything to standard
    ///         error or exits with another code than 0, and when this process is asked to end.
    bool read(QByteArray& bytes);

    /// The rest of standard output, at most 1 MB.
    /// @throws RuntimeError as `read` does.
    QByteArray readAll();

 private:
    void checkComplaints();
    [[noreturn]] void fail(const QString& what);

    QProcess process_;
    QString name_;
    std::chrono::steady_clock::duration timeLeft_;
};
