#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

#include "platform/index.h"
#include "toolkit/RowTexts.h"

/// The flat model behind a list in report view: rows with a key, one text per column and one colour. What a
/// row holds is addressed by its item, a number that stays while rows change their places.
///
/// While a fill is under way (beginFill to endFill) new rows can be read and changed by key and index, but
/// the views do not know of them; endFill shows them all at once. So a list of any length costs the views one
/// signal, and a message box opened in the middle finds them in order.
class ListModel final : public QAbstractTableModel {
    Q_OBJECT

 public:
    /// 0xBBGGRR, as colours are stored.
    using Colour = quint32;

    explicit ListModel(QObject* parent = nullptr);

    void setCaptions(const QStringList& captions);

    /// Takes all rows away.
    void clear();
    void beginFill();
    void endFill();

    /// Number of rows, those of a fill under way included.
    int count() const noexcept { return texts_.count(); }

    /// Adds a row, with `text` in the first column, in black: at the end, or where it belongs while sorted.
    /// @return its item. @throws RuntimeError 457 when the key is taken.
    int add(QStringView key, QStringView text);
    /// @return the item with the key. @throws RuntimeError 35601 when there is none.
    int find(QStringView key) const;
    /// The item at a row of the current order, and the row of an item.
    int itemAt(int row) const { return elementAt(order_, row); }
    int rowOf(int item) const { return elementAt(rows_, item); }

    QString key(int item) const { return texts_.key(item).toString(); }
    /// Valid until the next change.
    QStringView textView(int item, int column) const { return texts_.cell(item, column); }
    QString text(int item, int column) const { return textView(item, column).toString(); }
    /// Setting what a cell holds already tells the views nothing, as does setColour.
    void setText(int item, int column, QStringView text);
    Colour colour(int item) const { return elementAt(colours_, item); }
    void setColour(int item, Colour colour);
    /// One colour for all rows, with one signal.
    void setColourOfAll(Colour colour);

    /// While sorted, the rows stand in the Czech order of one column's texts, whatever is added or changed.
    bool sorted() const noexcept { return sorted_; }
    void setSorted(bool sorted);
    int sortKey() const noexcept { return sortKey_; }
    Qt::SortOrder sortOrder() const noexcept { return sortOrder_; }
    /// Sorts anew while sorted, else is only remembered.
    void setSort(int column, Qt::SortOrder order);
    /// Puts the rows into another order: `rows` holds the present rows in the order wanted.
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
    int shown_ = 0;           // rows that the views know of
    bool filling_ = false;
    bool sorted_ = false;
    int sortKey_ = 0;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};
