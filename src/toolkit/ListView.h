#pragma once

#include <QStringList>
#include <QTreeView>
#include <optional>
#include <vector>

#include "platform/index.h"
#include "toolkit/ListModel.h"
#include "toolkit/rowKey.h"

class ListView;

/// Refers to one row of a ListView, wherever it moves, until the list is cleared.
class ListItem final {
 public:
    ListItem(ListModel& model, int item) : model_(&model), item_(item) {}

    /// Its row in the list's current order, from 0.
    int row() const { return model_->rowOf(item_); }
    QString key() const { return model_->key(item_); }
    /// The record's id, which the key is made of. @throws RuntimeError 13 or 6 for another kind of key.
    qint32 id() const { return rowId(key()); }
    QString text() const { return model_->text(item_, 0); }
    void setText(QStringView text) const { model_->setText(item_, 0, text); }
    /// The text of a column, from 1.
    /// @throws RuntimeError 380 when the list has no such column.
    QString subItem(int column) const;
    void setSubItem(int column, QStringView text) const;
    quint32 foreColor() const { return model_->colour(item_); }
    /// Sets the colour (0xBBGGRR) of the row with all its sub-items.
    void setForeColor(quint32 colour) const { model_->setColour(item_, colour); }

 private:
    void expectColumn(int column) const;

    ListModel* model_;
    int item_;
};

/// A column header: its caption and its width in twips.
struct ListColumn {
    QString caption;
    int width;
};

/// A list in report view with keyed rows.
class ListView final : public QTreeView {
    Q_OBJECT

 public:
    explicit ListView(QWidget* parent = nullptr);

    void setColumns(const std::vector<ListColumn>& columns);
    int columns() const { return countOf(widths_); }
    /// Width of a column, from 0, in twips: exactly as set, unless the user has resized it.
    int columnWidthInTwips(int column) const;
    /// @throws RuntimeError 380 for a negative width and for one above 245745.
    void setColumnWidthInTwips(int column, int width);

    void clear() { model_.clear(); }
    int count() const { return model_.count(); }
    /// Adds a row: at the end, or at its sorted place while sorted.
    /// @throws RuntimeError 457 when the key is taken.
    ListItem add(QStringView key, QStringView text) { return {model_, model_.add(key, text)}; }
    /// @throws RuntimeError 35601 when no row has the key.
    ListItem item(QStringView key) { return {model_, model_.find(key)}; }
    /// The row at an index from 0 in the current order. @throws RuntimeError 9 outside the list.
    ListItem itemAt(int row);

    /// While sorted, rows are kept in the Czech collation order of one column.
    bool sorted() const { return model_.sorted(); }
    void setSorted(bool sorted) { model_.setSorted(sorted); }
    /// The sort column (from 0) and order set last, whether or not the list is sorted.
    int sortKey() const { return model_.sortKey(); }
    Qt::SortOrder sortOrder() const { return model_.sortOrder(); }
    /// Sorts again while sorted. The header shows the order until the list is refilled unsorted.
    void setSort(int column, Qt::SortOrder order);
    /// Reorders the rows: `rows` holds the current row numbers in the new order.
    void rearrange(const std::vector<int>& rows) { model_.rearrange(rows); }
    /// The text of a cell by row and column, both from 0; valid until the next change.
    QStringView cell(int row, int column) const { return model_.textView(model_.itemAt(row), column); }

    /// Sets the colour (0xBBGGRR) of all rows.
    void setForeColorOfAll(quint32 colour) { model_.setColourOfAll(colour); }

    bool hasSelectedItem() const { return currentIndex().isValid(); }
    /// @throws RuntimeError 91 when no row is selected.
    ListItem selectedItem();
    void select(const ListItem& item);
    void ensureVisible(const ListItem& item);

    /// The row that is selected after a fill.
    enum class Selected {
        same,  ///< the one selected before, kept in view; if it is gone, the one below it, else the one above
        first
    };

    /// While it lives, rows are added without a signal each. Its end shows them and selects a row; the first
    /// one in a list that had none selected.
    class Fill final {
     public:
        explicit Fill(ListView& list, Selected selected = Selected::same) : list_(list) {
            list_.beginFill(selected);
        }
        ~Fill() { list_.endFill(); }
        Fill(const Fill&) = delete;
        Fill& operator=(const Fill&) = delete;

     private:
        ListView& list_;
    };

 signals:
    /// The selected row has changed; there may be none.
    void selectionMoved();
    /// A column header was clicked. @param column from 0.
    void columnClicked(int column);
    /// A context menu was requested, by releasing the right button or by keyboard.
    void contextMenuAsked(const QPoint& globalPosition);

 protected:
    /// Marks the selected row up to the edge, where the header reaches to.
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event = nullptr) const override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// Shows the full text of an elided cell as a tool tip.
    bool viewportEvent(QEvent* event) override;

 private:
    struct Width {
        int twips = 0;   // as set
        int pixels = 0;  // as the header rounded it
    };

    /// The selected row and its surroundings before a fill.
    struct Place {
        QStringList keys;  // of the row, the one below and the one above
        int row;
        int top;  // position of the vertical scroll bar
    };

    void beginFill(Selected selected);
    void endFill();
    int rowAt(const Place& place) const;

    ListModel model_;
    std::vector<Width> widths_;
    std::optional<Place> place_;  // kept while there are no rows
};

/// Sets the colour (0xBBGGRR) of the row with the key, the item and all its sub-items.
/// @throws RuntimeError 35601 when no row has the key.
void BarvaPolozky(ListView& list, const QString& key, quint32 colour);
