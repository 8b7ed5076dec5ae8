#pragma once

#include <QByteArrayView>
#include <QString>

#include "lookup/Module2.h"

/// The fuzzer's bytes as the text of a page.
inline QString fuzzText(const unsigned char* data, std::size_t size) {
    return UTF8NaText({reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)});
}

/// Stops the fuzzer unless something holds.
inline void require(bool holds) {
    if (!holds) __builtin_trap();
}
