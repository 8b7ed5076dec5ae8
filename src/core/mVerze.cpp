#include "core/mVerze.h"

using namespace Qt::StringLiterals;

QString verze::text() {
    return u"%1.%2.%3"_s.arg(major).arg(minor).arg(revision);
}
