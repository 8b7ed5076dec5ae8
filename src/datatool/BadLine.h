#pragma once

#include "platform/errors.h"

/// A faulty line of a table; those after it can be checked all the same.
class BadLine final : public RuntimeError {
 public:
    /// @param line from 1. @param what the fault in Czech, with a full stop.
    BadLine(qint64 line, const QString& what);
};
