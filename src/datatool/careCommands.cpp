#include "datatool/careCommands.h"

#include <QDateTime>
#include <QProcess>
#include <limits>

#include "datatool/Backup.h"
#include "datatool/Check.h"
#include "datatool/DataFiles.h"
#include "datatool/Progress.h"
#include "datatool/Repair.h"
#include "datatool/Restore.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

/// Runs `work` with a bar that shows its progress.
template <typename Work>
auto withBar(const CommandCall& call, Work&& work) {
    ProgressBar bar(call.errors);
    return work(bar.function());
}

QString folderOf(const CommandCall& call, qsizetype operand) {
    return call.operands.size() > operand ? call.operands[operand] : dataFiles::ownFolder();
}

/// Tells the result of a command that was started from the desktop's menu, by the first program that can.
void notify(const QString& heading, const QString& text) {
    const std::pair<QString, QStringList> programs[] = {
        {u"notify-send"_s, {u"--icon=kalvera"_s, heading, text.toHtmlEscaped()}},  // reads markup
        {u"kdialog"_s, {u"--title"_s, heading, u"--msgbox"_s, text}},
        {u"zenity"_s, {u"--info"_s, u"--no-markup"_s, u"--title"_s, heading, u"--text"_s, text}},
        // Without these it shows each byte of UTF-8 as a letter or, in the locale C, nothing.
        {u"env"_s, {u"LC_ALL=C.UTF-8"_s, u"xmessage"_s, u"-xrm"_s, u"*international: true"_s, text}}};
    for (const auto& [program, arguments] : programs) {
        if (QProcess::execute(program, arguments) == 0) return;
    }
}

int backUp(const CommandCall& call) {
    int keep = 0;
    if (call.has(u"--keep"_s)) {
        keep = call.options[u"--keep"_s].toInt();
        if (keep < 1) {
            call.errors << u"Chyba: Volba --keep potřebuje počet záloh od 1 do %1.\n"_s.arg(
                std::numeric_limits<int>::max());
            return exitUsage;
        }
    }
    const QString target = call.operands.size() > 1 ? call.operands[1] : backup::defaultTarget();
    const backup::Report report = withBar(call, [&](const Progress& progress) {
        return backup::run(folderOf(call, 0), target, keep, QDateTime::currentDateTime(), progress);
    });
    call.output << report.text();
    if (call.has(u"--desktop"_s)) notify(u"Zálohování katalogu"_s, report.text());
    return report.stayed.isEmpty() ? 0 : exitDifference;
}

}  // namespace

int checkPair(const CommandCall& call) {
    const check::Report report =
        withBar(call, [&](const Progress& progress) { return check::run(folderOf(call, 0), progress); });
    call.output << report.text();
    return report.isClean() ? 0 : exitDifference;
}

int repairPair(const CommandCall& call) {
    const repair::Report report = withBar(call, [&](const Progress& progress) {
        return repair::run(folderOf(call, 0), QDateTime::currentDateTime(), progress);
    });
    call.output << report.text();
    return report.isWhole() ? 0 : exitDifference;
}

int backUpPair(const CommandCall& call) {
    try {
        return backUp(call);
    } catch (const RuntimeError& failure) {
        if (call.has(u"--desktop"_s))
            notify(u"Zálohování katalogu"_s, u"Záloha nevznikla. "_s + failure.description());
        throw;
    }
}

int restorePair(const CommandCall& call) {
    const restore::Report report = withBar(call, [&](const Progress& progress) {
        return restore::run(call.operands[0], folderOf(call, 1), QDateTime::currentDateTime(), progress);
    });
    call.output << report.text();
    return 0;
}
