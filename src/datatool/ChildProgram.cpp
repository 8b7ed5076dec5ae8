#include "datatool/ChildProgram.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>

#include <csignal>
#endif

#include "datatool/Interruption.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int slice = 100;  // milliseconds between checks of the clock and for a request to end
constexpr qsizetype longestOutput = 1 << 20;

/// An environment in which mdbtools write UTF-8 in their default formats.
QProcessEnvironment surroundings() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name :
         {u"MDBICONV"_s, u"MDBPATH"_s, u"MDBOPTS"_s, u"MDB_JET3_CHARSET"_s, u"MDB_JET4_CHARSET"_s})
        environment.remove(name);
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return environment;
}

#ifdef Q_OS_UNIX
void limit(const ProgramLimits& limits) {
    const auto set = [](auto resource, rlim_t most) {
        const rlimit both{most, most};
        setrlimit(resource, &both);
    };
    if (limits.memory > 0) set(RLIMIT_AS, static_cast<rlim_t>(limits.memory));
    set(RLIMIT_CPU, static_cast<rlim_t>(1 + limits.time / std::chrono::seconds(1)));
    set(RLIMIT_CORE, 0);
#ifdef Q_OS_LINUX
    prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
}
#endif

}  // namespace

ChildProgram::ChildProgram(const QString& program, const QStringList& arguments, const ProgramLimits& limits)
    : name_(QFileInfo(program).fileName()), timeLeft_(limits.time) {
    process_.setProcessEnvironment(surroundings());
#ifdef Q_OS_UNIX
    process_.setChildProcessModifier([limits] { limit(limits); });
#endif
    process_.start(program, arguments, QIODevice::ReadOnly);
}

ChildProgram::~ChildProgram() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished();
}

void ChildProgram::fail(const QString& what) {
    interruption::check();
    throw RuntimeError(errors::invalidCall, u"Program %1 %2."_s.arg(name_, what));
}

void ChildProgram::checkComplaints() {
    const QByteArray complaints = process_.readAllStandardError();
    if (complaints.isEmpty()) return;
    qWarning("%s: %s", qUtf8Printable(name_), complaints.left(1000).trimmed().constData());
    fail(u"si stěžuje na obsah souboru, ten je asi poškozený"_s);
}

bool ChildProgram::read(QByteArray& bytes) {
    for (;;) {
        interruption::check();
        checkComplaints();
        if (process_.bytesAvailable() > 0) {
            bytes = process_.readAllStandardOutput();
            return true;
        }
        if (process_.state() == QProcess::NotRunning) break;
        if (timeLeft_.count() <= 0) fail(u"pracuje příliš dlouho, soubor je asi poškozený"_s);
        // Only waiting counts: a program blocked by a full pipe is not at fault.
        const auto before = std::chrono::steady_clock::now();
        process_.waitForReadyRead(slice);
        timeLeft_ -= std::chrono::steady_clock::now() - before;
    }
    if (process_.error() == QProcess::FailedToStart) fail(u"nelze spustit"_s);
    if (process_.exitStatus() != QProcess::NormalExit) fail(u"spadl, soubor je asi poškozený"_s);
    if (process_.exitCode() != 0) fail(u"skončil s chybou %1"_s.arg(process_.exitCode()));
    return false;
}

QByteArray ChildProgram::readAll() {
    QByteArray all;
    for (QByteArray bytes; read(bytes);) {
        all += bytes;
        if (all.size() > longestOutput) fail(u"píše bez konce, soubor je asi poškozený"_s);
    }
    return all;
}
