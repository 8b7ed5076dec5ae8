#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

#include "platform/index.h"
#include "toolkit/RowTexts.h"

/// The flat model of a ListView: rows with a key, one text per column and one colour. Rows are addressed by
/// item, a number that stays the same when rows move.
///
/// During a fill (beginFill to endFill) new rows can be read and changed by key and index, but the views do
/// not see them until endFill. A list of any length thus costs one signal, and the views are consistent when
/// a message box opens in between.
class ListModel final : public QAbstractTableModel {
    Q_OBJECT

 public:
    /// 0xBBGGRR, as stored in the database.
    using Colour = quint32;

    explicit ListModel(QObject* parent = nullptr);

    void setCaptions(const QStringList& captions);

    /// Removes all rows.
    void clear();
    void beginFill();
    void endFill();

    /// Number of rows, including those of a fill in progress.
    int count() const noexcept { return texts_.count(); }

    /// Adds a black row with `text` in the first column: at the end, or at its sorted place while sorted.
    /// @return its item. @throws RuntimeError 457 when the key is taken.
    int add(QStringView key, QStringView text);
    /// @return the item with the key. @throws RuntimeError 35601 when there is none.
    int find(QStringView key) const;
    /// The row with the key in the current order; -1 when there is none.
    int rowWith(QStringView key) const;
    /// The item at a row of the current order, and the row of an item.
    int itemAt(int row) const { return elementAt(order_, row); }
    int rowOf(int item) const { return elementAt(rows_, item); }

    QString key(int item) const { return texts_.key(item).toString(); }
    /// Valid until the next change.
    QStringView textView(int item, int column) const { return texts_.cell(item, column); }
    QString text(int item, int column) const { return textView(item, column).toString(); }
    /// Emits no signal when nothing changes, as does setColour.
    void setText(int item, int column, QStringView text);
    Colour colour(int item) const { return elementAt(colours_, item); }
    void setColour(int item, Colour colour);
    /// Sets the colour of all rows, with one signal.
    void setColourOfAll(Colour colour);

    /// While sorted, rows are kept in the Czech collation order of one column.
    bool sorted() const noexcept { return sorted_; }
    void setSorted(bool sorted);
    int sortKey() const noexcept { return sortKey_; }
    Qt::SortOrder sortOrder() const noexcept { return sortOrder_; }
    /// Sorts again while sorted, else only stores the parameters.
    void setSort(int column, Qt::SortOrder order);
    /// Reorders the rows: `rows` holds the current row numbers in the new order.
    void rearrange(const std::vector<int>& rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
    void tellChanged(int item, int firstColumn, int lastColumn, int role);
    int sortedRow(int item) const;
    void moveToSortedRow(int item);
    void sortRows();
    void takeOrder(std::vector<int> order);

    QStringList captions_;
    RowTexts texts_;
    std::vector<Colour> colours_;
    std::vector<int> order_;  // items by row
    std::vector<int> rows_;   // rows by item
    int shown_ = 0;           // rows visible to the views
    bool filling_ = false;
    bool sorted_ = false;
    int sortKey_ = 0;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};
