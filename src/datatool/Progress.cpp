#include "datatool/Progress.h"

#include <algorithm>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 firstShow = 1000;  // milliseconds
constexpr qint64 interval = 100;
constexpr int titleWidth = 32;
constexpr qsizetype barWidth = 30;
constexpr int usualColumns = 80;

bool isErrorTerminal() {
#ifdef Q_OS_WIN
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

int terminalColumns() {
#ifndef Q_OS_WIN
    winsize size{};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
#endif
    return usualColumns;
}

}  // namespace

QString progressText(const QString& title, qint64 done, qint64 all, int columns) {
    const int room = std::max(columns - 1, 1);
    if (all == 0) return (title + u" …"_s).left(room);
    const qint64 part = std::clamp(done, qint64{0}, all);
    const QString percent = QString::number(part * 100 / all).rightJustified(3) + u" %"_s;
    const QString bar = u'[' + QString(part * barWidth / all, u'#').leftJustified(barWidth, u'.') + u"] "_s;
    QString whole = title.leftJustified(titleWidth) + bar + percent;
    if (whole.size() <= room) return whole;
    // Without the bar, and in the narrowest of terminals with the number alone.
    const qsizetype left = room - percent.size() - 1;
    return (left > 0 ? title.left(left).leftJustified(left) + u' ' + percent : percent).left(room);
}

ProgressBar::ProgressBar(QTextStream& errors)
    : errors_(errors), isTerminal_(isErrorTerminal()), nextShow_(firstShow) {
    clock_.start();
}

Progress ProgressBar::function() {
    return [this](const QString& title, qint64 done, qint64 all) {
        if (isTerminal_ && clock_.elapsed() >= nextShow_) show(title, done, all);
    };
}

void ProgressBar::show(const QString& title, qint64 done, qint64 all) {
    clear();
    const QString text = progressText(title, done, all, terminalColumns());
    errors_ << u'\r' << text << Qt::flush;
    shown_ = text.size();
    nextShow_ = clock_.elapsed() + (all == 0 ? 0 : interval);
}

void ProgressBar::clear() {
    if (shown_ > 0) errors_ << u'\r' << QString(shown_, u' ') << u'\r' << Qt::flush;
    shown_ = 0;
}
