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

QString reasonOf(const QString& accepting, const QString& state, const QString& told) {
    constexpr QStringView stopped = u"5";  // IPP: printer-state "stopped"
    const QString reason = accepting == u"false" ? u"Tiskárna nepřijímá úlohy."_s
                           : state == stopped    ? u"Tiskárna je zastavená."_s
                                                 : QString();
    return reason.isEmpty() || told.isEmpty() ? reason : reason + u'\n' + told;
}

}  // namespace

QString printQueue::refusal(const QString& printer) {
    Cups cups;
    if (!cups.load()) return {};
    cups_dest_t* queue = cups.namedQueue(nullptr, printer.toUtf8().constData(), nullptr);
    if (queue == nullptr) return {};
    const auto option = [&](const char* name) {
        return QString::fromUtf8(cups.option(name, queue->num_options, queue->options));
    };
    QString reason = reasonOf(option("printer-is-accepting-jobs"), option("printer-state"),
                              option("printer-state-message"));
    cups.freeQueues(1, queue);
    return reason;
}

#else

QString printQueue::refusal(const QString& /*printer*/) {
    return {};
}

#endif
