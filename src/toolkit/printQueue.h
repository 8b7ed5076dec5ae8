#pragma once

#include <QString>

/// The system's print queues, as far as Qt does not tell of them.
namespace printQueue {

/// Why a queue would not print a job now: it takes none, or it is stopped. "" when it would, and where the
/// system has no CUPS.
QString refusal(const QString& printer);

}  // namespace printQueue
