#include "toolkit/ListBox.h"

#include <algorithm>

void ListBoxModel::setEntries(std::vector<ListEntry> entries) {
    beginResetModel();
    entries_ = std::move(entries);
    endResetModel();
}

int ListBoxModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : countOf(entries_);
}

QVariant ListBoxModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
            return entry(index.row()).text;
        case Qt::UserRole:
            return entry(index.row()).itemData;
        default:
            return {};
    }
}

ListBox::ListBox(QWidget* parent) : QListView(parent) {
    setModel(&model_);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
}

void ListBox::setEntries(std::vector<ListEntry> entries) {
    model_.setEntries(std::move(entries));
    // A current index for the keyboard, but no selection.
    if (listCount() > 0) selectionModel()->setCurrentIndex(model_.index(0), QItemSelectionModel::NoUpdate);
}

std::vector<int> ListBox::selectedEntries() const {
    std::vector<int> selected;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int index = range.top(); index <= range.bottom(); ++index)
            selected.push_back(index);
    }
    std::sort(selected.begin(), selected.end());
    return selected;
}
