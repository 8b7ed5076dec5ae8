#include "toolkit/RowTexts.h"

#include <QHashFunctions>
#include <algorithm>
#include <limits>

#include "platform/errors.h"

namespace {

/// Keys mostly end in a record's number. Consecutive numbers then take consecutive buckets, which uses the
/// cache far better than a scattering hash.
std::size_t hashOf(QStringView key) {
    std::size_t number = 0;
    std::size_t scale = 1;
    qsizetype at = key.size();
    for (; at > 0 && key[at - 1] >= u'0' && key[at - 1] <= u'9'; --at) {
        number += scale * (key[at - 1].unicode() - u'0');
        scale *= 10;
    }
    return at < key.size() ? number : qHash(key);
}

}  // namespace

void RowTexts::reset(int cells) {
    width_ = cells + 1;
    rows_ = 0;
    // The capacity is kept: a list is mostly refilled with about as much.
    texts_.clear();
    places_.clear();
    buckets_.assign(buckets_.size(), none);
}

RowTexts::Place RowTexts::store(QStringView text) {
    if (text.isEmpty()) return {};
    const std::size_t begin = texts_.size();
    const std::size_t length = toSize(text.size());
    if (begin + length > std::numeric_limits<quint32>::max()) throw RuntimeError(errors::outOfMemory);
    texts_.append(text.utf16(), length);
    return {static_cast<quint32>(begin), static_cast<quint32>(text.size())};
}

/// The bucket of the row with the key, else the free bucket to put it in.
std::size_t RowTexts::bucket(QStringView key) const {
    const std::size_t mask = buckets_.size() - 1;
    std::size_t at = hashOf(key) & mask;
    while (buckets_[at] != none && this->key(buckets_[at]) != key)
        at = (at + 1) & mask;
    return at;
}

void RowTexts::grow() {
    constexpr std::size_t fewest = 64;
    buckets_.assign(std::max(fewest, buckets_.size() * 2), none);
    for (int row = 0; row < count(); ++row)
        buckets_[bucket(key(row))] = row;
}

bool RowTexts::add(QStringView key) {
    if (2 * toSize(rows_ + 1) > buckets_.size()) grow();
    int& free = buckets_[bucket(key)];
    if (free != none) return false;
    const Place place = store(key);
    free = count();
    places_.resize(places_.size() + toSize(width_));
    places_[index(count(), 0)] = place;
    ++rows_;
    return true;
}

int RowTexts::find(QStringView key) const {
    return buckets_.empty() ? none : buckets_[bucket(key)];
}

void RowTexts::setCell(int row, int cell, QStringView text) {
    Place& place = places_[index(row, cell + 1)];
    if (text.size() <= place.length) {
        // Overwrites the old text, so that repeated updates of a row do not grow the buffer.
        std::copy_n(text.utf16(), text.size(), texts_.begin() + place.begin);
        place.length = static_cast<quint32>(text.size());
    } else {
        place = store(text);
    }
}
