#include "datatool/Interruption.h"

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

volatile std::sig_atomic_t requested = 0;

extern "C" void remember(int) {
    requested = 1;
}

}  // namespace

interruption::Interrupted::Interrupted()
    : RuntimeError(errors::invalidCall, u"Práce byla přerušena, nic se nezměnilo."_s) {}

void interruption::watch() {
#ifdef Q_OS_UNIX
    struct sigaction action {};
    action.sa_handler = remember;
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaction(number, &action, nullptr);
    action.sa_handler = SIG_IGN;
    for (const int number : {SIGPIPE, SIGXFSZ})
        sigaction(number, &action, nullptr);
#else
    std::signal(SIGINT, remember);
    std::signal(SIGTERM, remember);
#endif
}

void interruption::check() {
    if (requested != 0) throw Interrupted();
}
