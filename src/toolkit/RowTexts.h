#pragma once

#include <QString>
#include <string>
#include <vector>

/// The texts of a long list, kept in one piece of memory: rows of equally many cells and a key each. Filling
/// it costs no allocation per cell and emptying it none per row, which is most of what a list of separate
/// strings costs. Rows are counted from 0 and found by their keys.
class RowTexts final {
 public:
    /// Takes everything away; rows have `cells` cells from now on.
    void reset(int cells);

    int count() const noexcept { return static_cast<int>(rows_); }

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
    std::size_t index(int row, int place) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(place);
    }
    QStringView text(const Place& place) const {
        return {texts_.data() + place.begin, static_cast<qsizetype>(place.length)};
    }
    Place store(QStringView text);
    std::size_t bucket(QStringView key) const;
    void grow();

    int width_ = 1;  // cells, and the key in front of them
    std::size_t rows_ = 0;
    std::u16string texts_;       // a cell that grew leaves its former text behind until the next reset
    std::vector<Place> places_;  // width_ for each row
    std::vector<int> buckets_;   // rows by the hash of their keys, half of them free; a power of two
};
