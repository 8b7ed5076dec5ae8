#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <vector>

#include "platform/ListEntry.h"
#include "platform/index.h"

/// The model of a ListBox: entries' texts, and their item data under Qt::UserRole.
class ListBoxModel final : public QAbstractListModel {
    Q_OBJECT

 public:
    using QAbstractListModel::QAbstractListModel;

    void setEntries(std::vector<ListEntry> entries);
    const ListEntry& entry(int index) const { return elementAt(entries_, index); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
    std::vector<ListEntry> entries_;
};

/// A list box with multiple selection whose entries carry a number each.
class ListBox final : public QListView {
    Q_OBJECT

 public:
    explicit ListBox(QWidget* parent = nullptr);

    /// Replaces the entries; none is selected.
    void setEntries(std::vector<ListEntry> entries);

    int listCount() const { return model_.rowCount(); }
    /// @param index from 0 to listCount() - 1.
    const ListEntry& entry(int index) const { return model_.entry(index); }
    /// Indexes of the selected entries, in the order of the list.
    std::vector<int> selectedEntries() const;

 private:
    ListBoxModel model_;
};
