#pragma once

#include "platform/errors.h"

/// Ctrl-C and the requests to end that a system sends. They are noticed at the next check, so that what has
/// been begun is undone in an orderly way.
namespace interruption {

/// The process has been asked to end.
class Interrupted final : public RuntimeError {
 public:
    Interrupted();
};

/// From now on such a request no longer ends the process. Nor does a write to a closed pipe or beyond the
/// size that files may have: both become failures of that write.
void watch();

/// @throws Interrupted once the process has been asked to end.
void check();

}  // namespace interruption
