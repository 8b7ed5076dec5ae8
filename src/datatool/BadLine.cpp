#include "datatool/BadLine.h"

using namespace Qt::StringLiterals;

BadLine::BadLine(qint64 line, const QString& what)
    : RuntimeError(errors::invalidCall, u"Řádek %1: %2"_s.arg(line).arg(what)) {}
