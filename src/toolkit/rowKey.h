#pragma once

#include <QString>
#include <array>
#include <charconv>

/// The key of a list's row: a letter and an id in decimal. Made for every row of every fill, so in one piece.
inline QString rowKey(char letter, qint32 id) {
    std::array<char, 12> key{letter};
    const auto end = std::to_chars(key.data() + 1, key.data() + key.size(), id).ptr;
    return QString::fromLatin1(key.data(), end - key.data());
}
