#include "toolkit/ListView.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

#include "platform/errors.h"
#include "platform/index.h"
#include "toolkit/ListHeader.h"
#include "toolkit/twips.h"

namespace {

constexpr int widestColumn = 245745;  // twips: 16383 pixels

/// Adds a little space above and below the text.
class RowDelegate final : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, twips::scaled(space));
    }

 private:
    static constexpr int space = 4;  // pixels of the layout
};

}  // namespace

void ListItem::expectColumn(int column) const {
    if (column < 1 || column >= model_->columnCount()) throw RuntimeError(errors::invalidPropertyValue);
}

QString ListItem::subItem(int column) const {
    expectColumn(column);
    return model_->text(item_, column);
}

void ListItem::setSubItem(int column, QStringView text) const {
    expectColumn(column);
    model_->setText(item_, column, text);
}

ListView::ListView(QWidget* parent) : QTreeView(parent) {
    setHeader(new ListHeader(this));
    header()->setSectionsClickable(true);  // setHeader has turned it off
    setModel(&model_);
    setItemDelegate(new RowDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
    // The second of two quick clicks arrives as a double click and must count as well.
    connect(header(), &QHeaderView::sectionClicked, this, &ListView::columnClicked);
    connect(header(), &QHeaderView::sectionDoubleClicked, this, &ListView::columnClicked);
}

void ListView::setColumns(const std::vector<ListColumn>& columns) {
    QStringList captions;
    for (const ListColumn& column : columns)
        captions += column.caption;
    model_.setCaptions(captions);
    widths_.assign(columns.size(), {});
    for (int column = 0; column < this->columns(); ++column) {
        setColumnWidthInTwips(column, elementAt(columns, column).width);
    }
}

int ListView::columnWidthInTwips(int column) const {
    const Width& width = elementAt(widths_, column);
    const int shown = columnWidth(column);
    return shown == width.pixels ? width.twips : twips::fromPixels(shown);
}

void ListView::setColumnWidthInTwips(int column, int width) {
    if (width < 0 || width > widestColumn) throw RuntimeError(errors::invalidPropertyValue);
    setColumnWidth(column, twips::toPixels(width));
    elementAt(widths_, column) = {width, columnWidth(column)};
}

ListItem ListView::itemAt(int row) {
    if (row < 0 || row >= count()) throw RuntimeError(errors::subscriptOutOfRange);
    return {model_, model_.itemAt(row)};
}

void ListView::setSort(int column, Qt::SortOrder order) {
    model_.setSort(column, order);
    header()->setSortIndicator(column, order);
    header()->setSortIndicatorShown(true);
}

ListItem ListView::selectedItem() {
    if (!hasSelectedItem()) throw RuntimeError(errors::objectNotSet);
    return {model_, model_.itemAt(currentIndex().row())};
}

void ListView::select(const ListItem& item) {
    const int across = horizontalScrollBar()->value();
    setCurrentIndex(model_.index(item.row(), 0));
    horizontalScrollBar()->setValue(across);
}

void ListView::ensureVisible(const ListItem& item) {
    const int across = horizontalScrollBar()->value();
    scrollTo(model_.index(item.row(), 0));
    horizontalScrollBar()->setValue(across);
}

QItemSelectionModel::SelectionFlags ListView::selectionCommand(const QModelIndex& index,
                                                               const QEvent*) const {
    // One row is always selected; no key or modifier deselects it.
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::NoUpdate;
}

void ListView::beginFill(Selected selected) {
    if (selected == Selected::first) {
        place_.reset();
    } else if (hasSelectedItem()) {
        const int row = currentIndex().row();
        place_ = {.keys = {}, .row = row, .top = verticalScrollBar()->value()};
        for (const int near : {row, row + 1, row - 1}) {
            if (near >= 0 && near < count()) place_->keys += model_.key(model_.itemAt(near));
        }
    }
    model_.beginFill();
}

int ListView::rowAt(const Place& place) const {
    for (const QString& key : place.keys) {
        if (const int row = model_.rowWith(key); row >= 0) return row;
    }
    return std::min(place.row, count() - 1);
}

void ListView::endFill() {
    model_.endFill();
    if (!model_.sorted()) header()->setSortIndicatorShown(false);
    if (count() > 0 && place_) {
        const ListItem item(model_, model_.itemAt(rowAt(*place_)));
        doItemsLayout();  // so that there is something to scroll
        verticalScrollBar()->setValue(place_->top);
        select(item);
        ensureVisible(item);
    } else if (count() > 0) {
        setCurrentIndex(model_.index(0, 0));
    }
    emit selectionMoved();
}

void ListView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    QTreeView::drawRow(painter, option, index);
    const int behind = header()->length() - header()->offset();
    if (behind >= viewport()->width() || !selectionModel()->isRowSelected(index.row())) return;
    // The frame of the focused row closes within the margin of the last cell.
    const int seam = behind - style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) - 1;
    QStyleOptionViewItem rest = option;
    rest.rect.setLeft(seam);
    rest.rect.setRight(viewport()->width() - 1);
    rest.state |= QStyle::State_Selected;
    rest.viewItemPosition = QStyleOptionViewItem::End;
    painter->save();
    painter->setClipRect(rest.rect);
    style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &rest, painter, this);
    if (hasFocus() && index.row() == currentIndex().row()) {
        QStyleOptionFocusRect frame;
        frame.QStyleOption::operator=(rest);
        frame.rect.setLeft(0);
        frame.state |= QStyle::State_KeyboardFocusChange;
        frame.backgroundColor = rest.palette.color(QPalette::Highlight);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, painter, this);
    }
    painter->restore();
}

void ListView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    emit selectionMoved();
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton) emit contextMenuAsked(event->globalPosition().toPoint());
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    // With the mouse the menu opens on release, on every system; see mouseReleaseEvent.
    if (event->reason() != QContextMenuEvent::Keyboard || !hasSelectedItem()) return;
    ensureVisible(selectedItem());
    const QModelIndex first = currentIndex().siblingAtColumn(0);
    emit contextMenuAsked(viewport()->mapToGlobal(visualRect(first).bottomLeft()));
}

void BarvaPolozky(ListView& list, const QString& key, quint32 colour) {
    list.item(key).setForeColor(colour);
}

bool ListView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTreeView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    const bool cut = index.isValid() && sizeHintForIndex(index).width() > columnWidth(index.column());
    // QToolTip detects rich text by itself; escaping keeps markup in a title visible.
    const QString text = cut ? index.data().toString().toHtmlEscaped() : QString();
    QToolTip::showText(help->globalPos(), text.isEmpty() ? text : QStringLiteral("<span>%1</span>").arg(text),
                       this);
    return true;
}
