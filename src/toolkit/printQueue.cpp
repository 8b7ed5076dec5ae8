#include "toolkit/printQueue.h"

#ifdef KALVERA_CUPS
#include <cups/cups.h>

#include <QLibrary>

using namespace Qt::StringLiterals;

namespace {

/// The functions of libcups that are needed. The library is loaded when something is printed, as Qt's own
/// plugin does; linked in, it would slow down every start.
struct Cups {
    decltype(&cupsGetNamedDest) namedQueue = nullptr;
    decltype(&cupsGetOption) option = nullptr;
    decltype(&cupsFreeDests) freeQueues = nullptr;

    bool load() {
        QLibrary library(u"cups"_s, 2);
        const auto resolve = [&library](const char* name, auto& function) {
            function = reinterpret_cast<std::decay_t<decltype(function)>>(library.resolve(name));
            return function != nullptr;
        };
        return resolve("cupsGetNamedDest", namedQueue) && resolve("cupsGetOption", option) &&
               resolve("cupsFreeDests", freeQueues);
    }
};

}  // namespace

QString printQueue::refusal(const QString& printer) {
    Cups cups;
    if (!cups.load()) return {};
    cups_dest_t* queue = cups.namedQueue(nullptr, printer.toUtf8().constData(), nullptr);
    if (queue == nullptr) return {};
    const auto option = [&](const char* name) {
        return QString::fromUtf8(cups.option(name, queue->num_options, queue->options));
    };
    constexpr QStringView stopped = u"5";  // IPP: printer-state "stopped"
    QString reason;
    if (option("printer-is-accepting-jobs") == u"false") {
        reason = u"Tiskárna %1 nepřijímá úlohy."_s.arg(printer);
    } else if (option("printer-state") == stopped) {
        reason = u"Tiskárna %1 je zastavená."_s.arg(printer);
    }
    cups.freeQueues(1, queue);
    return reason;
}

#else

QString printQueue::refusal(const QString& /*printer*/) {
    return {};
}

#endif
