#include "toolkit/ListModel.h"

#include <QCollatorSortKey>
#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>

#include "platform/collation.h"
#include "platform/errors.h"
#include "toolkit/shades.h"

ListModel::ListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ListModel::setCaptions(const QStringList& captions) {
    captions_ = captions;
    clear();
}

void ListModel::clear() {
    beginResetModel();
    texts_.reset(countOf(captions_));
    colours_.clear();
    order_.clear();
    rows_.clear();
    shown_ = 0;
    endResetModel();
}

void ListModel::beginFill() {
    filling_ = true;
}

void ListModel::endFill() {
    filling_ = false;
    if (shown_ == count()) return;
    if (sorted_) sortRows();
    // For a view one reset is cheaper than inserting many rows, and the selection is reset anyway.
    beginResetModel();
    shown_ = count();
    endResetModel();
}

int ListModel::add(QStringView key, QStringView text) {
    const int item = count();
    if (!texts_.add(key)) throw RuntimeError(errors::duplicateKey);
    texts_.setCell(item, 0, text);
    colours_.push_back(0);
    const int row = sorted_ && !filling_ ? sortedRow(item) : item;
    if (!filling_) beginInsertRows({}, row, row);
    rows_.push_back(row);
    order_.insert(order_.begin() + row, item);
    for (int moved = row + 1; moved < count(); ++moved)
        elementAt(rows_, itemAt(moved)) = moved;
    if (!filling_) {
        shown_ = count();
        endInsertRows();
    }
    return item;
}

int ListModel::find(QStringView key) const {
    const int item = texts_.find(key);
    if (item < 0) throw RuntimeError(errors::elementNotFound);
    return item;
}

int ListModel::rowWith(QStringView key) const {
    const int item = texts_.find(key);
    return item < 0 ? -1 : rowOf(item);
}

void ListModel::setText(int item, int column, QStringView text) {
    if (texts_.cell(item, column) == text) return;
    texts_.setCell(item, column, text);
    tellChanged(item, column, column, Qt::DisplayRole);
    if (sorted_ && !filling_ && column == sortKey_) moveToSortedRow(item);
}

void ListModel::setColour(int item, Colour colour) {
    Colour& held = elementAt(colours_, item);
    if (held == colour) return;
    held = colour;
    tellChanged(item, 0, countOf(captions_) - 1, Qt::ForegroundRole);
}

void ListModel::setColourOfAll(Colour colour) {
    std::fill(colours_.begin(), colours_.end(), colour);
    if (shown_ == 0) return;
    emit dataChanged(index(0, 0), index(shown_ - 1, countOf(captions_) - 1), {Qt::ForegroundRole});
}

void ListModel::tellChanged(int item, int firstColumn, int lastColumn, int role) {
    const int row = rowOf(item);
    if (row < shown_) emit dataChanged(index(row, firstColumn), index(row, lastColumn), {role});
}

/// The sorted place of an item among the others, after those with an equal text.
int ListModel::sortedRow(int item) const {
    const QStringView text = textView(item, sortKey_);
    std::vector<int> others = order_;
    std::erase(others, item);
    const auto place =
        std::upper_bound(others.begin(), others.end(), text, [this](QStringView wanted, int other) {
            const int difference = collation::compare(wanted, textView(other, sortKey_));
            return sortOrder_ == Qt::AscendingOrder ? difference < 0 : difference > 0;
        });
    return static_cast<int>(place - others.begin());
}

void ListModel::moveToSortedRow(int item) {
    const int from = rowOf(item);
    const int to = sortedRow(item);
    if (from == to) return;
    beginMoveRows({}, from, from, {}, to > from ? to + 1 : to);
    order_.erase(order_.begin() + from);
    order_.insert(order_.begin() + to, item);
    for (int row = std::min(from, to); row <= std::max(from, to); ++row) {
        elementAt(rows_, itemAt(row)) = row;
    }
    endMoveRows();
}

void ListModel::setSorted(bool sorted) {
    sorted_ = sorted;
    if (sorted_) sortRows();
}

void ListModel::setSort(int column, Qt::SortOrder order) {
    sortKey_ = column;
    sortOrder_ = order;
    if (sorted_) sortRows();
}

void ListModel::sortRows() {
    // Comparing sort keys is far cheaper than comparing texts.
    std::vector<QCollatorSortKey> keys;
    keys.reserve(order_.size());
    for (int item = 0; item < count(); ++item)
        keys.push_back(collation::sortKey(text(item, sortKey_)));
    std::vector<int> order = order_;
    std::stable_sort(order.begin(), order.end(), [&](int left, int right) {
        const int difference = elementAt(keys, left).compare(elementAt(keys, right));
        return sortOrder_ == Qt::AscendingOrder ? difference < 0 : difference > 0;
    });
    takeOrder(std::move(order));
}

void ListModel::rearrange(const std::vector<int>& rows) {
    std::vector<int> order;
    order.reserve(rows.size());
    for (const int row : rows)
        order.push_back(itemAt(row));
    takeOrder(std::move(order));
}

void ListModel::takeOrder(std::vector<int> order) {
    if (filling_ || shown_ < count()) {
        order_ = std::move(order);
        for (int row = 0; row < count(); ++row)
            elementAt(rows_, itemAt(row)) = row;
        return;
    }
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList from = persistentIndexList();
    QList<int> items;
    for (const QModelIndex& index : from)
        items += itemAt(index.row());
    order_ = std::move(order);
    for (int row = 0; row < count(); ++row)
        elementAt(rows_, itemAt(row)) = row;
    QModelIndexList to;
    for (qsizetype at = 0; at < from.size(); ++at)
        to += index(rowOf(items[at]), from[at].column());
    changePersistentIndexList(from, to);
    emit layoutChanged({}, VerticalSortHint);
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : countOf(captions_);
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int item = itemAt(index.row());
    if (role == Qt::DisplayRole) return text(item, index.column());
    if (role == Qt::ForegroundRole) {
        const Colour colour = this->colour(item);
        // Black means the desktop's text colour, which is light in a dark theme.
        if (colour == 0) return {};
        const QColor given(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
                           static_cast<int>((colour >> 16) & 0xFF));
        return shades::readable(given, QGuiApplication::palette().color(QPalette::Base));
    }
    return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return captions_.value(section);
}
