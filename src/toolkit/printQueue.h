#pragma once

#include <QString>

/// The state of the system's print queues, which Qt does not report.
namespace printQueue {

/// Why a queue would not print a job now: it accepts none, or it is stopped. "" if it would print, and on
/// systems without CUPS.
QString refusal(const QString& printer);

}  // namespace printQueue
