#include "datatool/Progress.h"

#include <algorithm>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 firstShow = 1000;  // milliseconds
constexpr qint64 interval = 100;
constexpr int titleWidth = 32;
constexpr qint64 barWidth = 30;
constexpr int lineWidth = 72;

bool isErrorTerminal() {
#ifdef Q_OS_WIN
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

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
    if (all == 0) {  // how much there is to do is not known
        errors_ << u'\r' << (title + u" …"_s).left(lineWidth) << Qt::flush;
        isShown_ = true;
        return;
    }
    const qint64 whole = std::max(all, qint64{1});
    const qint64 part = std::clamp(done, qint64{0}, whole);
    const auto filled = static_cast<int>(part * barWidth / whole);
    errors_ << u'\r' << title.leftJustified(titleWidth) << u'['
            << QString(filled, u'#').leftJustified(static_cast<int>(barWidth), u'.') << u"] "_s
            << QString::number(part * 100 / whole).rightJustified(3) << u" %"_s << Qt::flush;
    isShown_ = true;
    nextShow_ = clock_.elapsed() + interval;
}

void ProgressBar::clear() {
    if (isShown_) errors_ << u'\r' << QString(lineWidth, u' ') << u'\r' << Qt::flush;
    isShown_ = false;
}
