#pragma once

#include <QTreeView>
#include <vector>

#include "platform/index.h"
#include "toolkit/ListModel.h"
#include "toolkit/rowKey.h"

class ListView;

/// One row of a ListView, wherever it stands, until the list is emptied.
class ListItem final {
 public:
    ListItem(ListModel& model, int item) : model_(&model), item_(item) {}

    /// Its place in the list's present order, from 0.
    int row() const { return model_->rowOf(item_); }
    QString key() const { return model_->key(item_); }
    /// The record's id, which the key is made of. @throws RuntimeError 13 or 6 for another kind of key.
    qint32 id() const { return rowId(key()); }
    QString text() const { return model_->text(item_, 0); }
    void setText(QStringView text) const { model_->setText(item_, 0, text); }
    /// The text of a further column, from 1.
    /// @throws RuntimeError 380 when the list has no such column.
    QString subItem(int column) const;
    void setSubItem(int column, QStringView text) const;
    quint32 foreColor() const { return model_->colour(item_); }
    /// The colour (0xBBGGRR) of the row with all its sub-items.
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
    /// Adds a row: at the end, or where it belongs while sorted. @throws RuntimeError 457 when the key is
    /// taken.
    ListItem add(QStringView key, QStringView text) { return {model_, model_.add(key, text)}; }
    /// @throws RuntimeError 35601 when no row has the key.
    ListItem item(QStringView key) { return {model_, model_.find(key)}; }
    /// The row at an index from 0 in the list's order. @throws RuntimeError 9 outside the list.
    ListItem itemAt(int row);

    /// While sorted, the rows stand in the Czech order of one column's texts, whatever is added or changed.
    bool sorted() const { return model_.sorted(); }
    void setSorted(bool sorted) { model_.setSorted(sorted); }
    /// The column (from 0) and the order that the list is sorted by, or was told last.
    int sortKey() const { return model_.sortKey(); }
    Qt::SortOrder sortOrder() const { return model_.sortOrder(); }
    /// Sorts anew while sorted. The header shows the order until the list is filled in another one.
    void setSort(int column, Qt::SortOrder order);
    /// Puts the rows into another order: `rows` holds the present rows in the order wanted.
    void rearrange(const std::vector<int>& rows) { model_.rearrange(rows); }
    /// The text of a cell by row and column, both from 0; valid until the next change.
    QStringView cell(int row, int column) const { return model_.textView(model_.itemAt(row), column); }

    /// Gives all rows one colour (0xBBGGRR).
    void setForeColorOfAll(quint32 colour) { model_.setColourOfAll(colour); }

    bool hasSelectedItem() const { return currentIndex().isValid(); }
    /// @throws RuntimeError 91 when no row is selected.
    ListItem selectedItem();
    void select(const ListItem& item);
    void ensureVisible(const ListItem& item);

    /// Fills the list without a signal per row for as long as it lives. Afterwards the first row is the
    /// selected one.
    class Fill final {
     public:
        explicit Fill(ListView& list) : list_(list) { list_.model_.beginFill(); }
        ~Fill() { list_.endFill(); }
        Fill(const Fill&) = delete;
        Fill& operator=(const Fill&) = delete;

     private:
        ListView& list_;
    };

 signals:
    /// Another row, or none, is the selected one now.
    void selectionMoved();
    /// The user has clicked on a column's header. @param column from 0.
    void columnClicked(int column);
    /// The user asks for a context menu: by a release of the right button, or by the keyboard.
    void contextMenuAsked(const QPoint& globalPosition);

 protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event = nullptr) const override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// Tells the whole text of a cell that its column is too narrow for.
    bool viewportEvent(QEvent* event) override;

 private:
    struct Width {
        int twips = 0;   // as set
        int pixels = 0;  // what the header made of it
    };

    void endFill();

    ListModel model_;
    std::vector<Width> widths_;
};

/// Gives the row with the key, the item and all its sub-items, one colour (0xBBGGRR).
/// @throws RuntimeError 35601 when no row has the key.
void BarvaPolozky(ListView& list, const QString& key, quint32 colour);
