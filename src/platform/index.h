#pragma once

#include <cstddef>

/// Signed and unsigned sizes: Qt and this program count with signed numbers, the standard containers with
/// unsigned ones.

/// A count as a size of the standard library. It must not be negative.
template <typename Count>
constexpr std::size_t toSize(Count count) {
    return static_cast<std::size_t>(count);
}

/// The element at an index, which must be within the container.
template <typename Container, typename Index>
constexpr decltype(auto) elementAt(Container& container, Index index) {
    return container[toSize(index)];
}

/// The number of elements; more than an int holds are not expected.
template <typename Container>
constexpr int countOf(const Container& container) {
    return static_cast<int>(container.size());
}
