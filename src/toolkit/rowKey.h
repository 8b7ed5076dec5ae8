#pragma once

#include <QString>
#include <array>
#include <charconv>

#include "platform/text.h"

/// Keys of list rows: a letter for the kind of record, and the record's id in decimal or another code.

inline QString rowKey(char letter, qint32 id) {
    // Called for every row of a list, so with a single allocation.
    std::array<char, 12> key{letter};
    const auto end = std::to_chars(key.data() + 1, key.data() + key.size(), id).ptr;
    return QString::fromLatin1(key.data(), end - key.data());
}

inline QString rowKey(char letter, const QString& code) {
    return QLatin1Char(letter) + code;
}

/// The part behind the letter.
inline QString rowCode(const QString& key) {
    return key.mid(1);
}

/// The record's id.
/// @throws RuntimeError 13 or 6 when that part is no 32-bit number.
inline qint32 rowId(const QString& key) {
    return text::toLong(rowCode(key));
}
