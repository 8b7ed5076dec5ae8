#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <vector>

#include "platform/ListEntry.h"
#include "platform/index.h"

/// The model behind a ListBox: the entries' texts, and their numbers under Qt::UserRole.
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

/// A list box whose entries carry a number each, and of which several can be selected.
class ListBox final : public QListView {
    Q_OBJECT

 public:
    explicit ListBox(QWidget* parent = nullptr);

    /// Shows these entries in place of the former ones, with none selected.
    void setEntries(std::vector<ListEntry> entries);

    int listCount() const { return model_.rowCount(); }
    /// By index from 0 to listCount less 1.
    const ListEntry& entry(int index) const { return model_.entry(index); }
    /// Indexes of the selected entries, in the order of the list.
    std::vector<int> selectedEntries() const;

 private:
    ListBoxModel model_;
};
