#pragma once

#include "platform/errors.h"

/// Ctrl-C and termination signals. They are noticed at the next check, so that what has been started is
/// undone in an orderly way.
namespace interruption {

/// The process has been asked to end.
class Interrupted final : public RuntimeError {
 public:
    Interrupted();
};

/// From now on such a signal no longer ends the process. Writing to a closed pipe or beyond the file size
/// limit fails instead of ending it.
void watch();

/// @throws Interrupted once the process has been asked to end.
void check();

}  // namespace interruption
