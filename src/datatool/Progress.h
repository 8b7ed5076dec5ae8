#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTextStream>
#include <functional>

/// Called from time to time during long work: what is being done, how much of it is done, and all there is.
using Progress = std::function<void(const QString& title, qint64 done, qint64 all)>;

/// What a bar shows, without a line break.
/// @param all 0 when it is not known.
/// @param columns those of the terminal; the text leaves the last one free.
QString progressText(const QString& title, qint64 done, qint64 all, int columns);

/// A bar that shows on a terminal when the work takes longer than a second. Nothing if standard error is
/// none.
class ProgressBar final {
 public:
    explicit ProgressBar(QTextStream& errors);
    ~ProgressBar() { clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// A function that shows progress on this bar, which must outlive it.
    Progress function();
    /// Removes the bar from the screen.
    void clear();

 private:
    void show(const QString& title, qint64 done, qint64 all);

    QTextStream& errors_;
    bool isTerminal_;
    QElapsedTimer clock_;
    qint64 nextShow_;
    qsizetype shown_ = 0;  // letters on the screen
};
