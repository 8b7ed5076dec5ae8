#pragma once

#include <QString>
#include <string>
#include <vector>

#include "platform/index.h"

/// The texts of a long list in one buffer: rows of equally many cells, each with a key. Unlike a list of
/// separate strings it needs no allocation per cell, which dominates the cost of filling and clearing. Rows
/// are counted from 0 and found by key.
class RowTexts final {
 public:
    /// Removes all rows; new ones have `cells` cells.
    void reset(int cells);

    int count() const noexcept { return rows_; }

    /// Adds a row of empty cells. @return false, changing nothing, when the key is taken.
    bool add(QStringView key);
    /// The row with the key; -1 when there is none.
    int find(QStringView key) const;

    /// Valid until the next change.
    QStringView key(int row) const { return text(at(row, 0)); }
    QStringView cell(int row, int cell) const { return text(at(row, cell + 1)); }
    void setCell(int row, int cell, QStringView text);

 private:
    struct Place {
        quint32 begin = 0;
        quint32 length = 0;
    };

    static constexpr int none = -1;

    const Place& at(int row, int place) const { return places_[index(row, place)]; }
    std::size_t index(int row, int place) const { return toSize(row) * toSize(width_) + toSize(place); }
    QStringView text(const Place& place) const {
        return {texts_.data() + place.begin, static_cast<qsizetype>(place.length)};
    }
    Place store(QStringView text);
    std::size_t bucket(QStringView key) const;
    void grow();

    int width_ = 1;  // the key and the cells
    int rows_ = 0;
    std::u16string texts_;       // a grown cell leaves its old text behind until reset
    std::vector<Place> places_;  // width_ for each row
    std::vector<int> buckets_;   // rows by hash of key: open addressing, at most half full, size a power of 2
};
