#include "toolkit/ListModel.h"

#include <QColor>

#include "platform/errors.h"

ListModel::ListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ListModel::setCaptions(const QStringList& captions) {
    beginResetModel();
    captions_ = captions;
    emptyRow_ = QStringList(captions.size(), QString());
    endResetModel();
}

void ListModel::clear() {
    beginResetModel();
    rows_.clear();
    byKey_.clear();
    shown_ = 0;
    endResetModel();
}

void ListModel::beginFill() {
    filling_ = true;
}

void ListModel::endFill() {
    filling_ = false;
    if (shown_ == count()) return;
    // One reset is cheaper for a view than one insertion of many rows, and the selection starts anew anyway.
    beginResetModel();
    shown_ = count();
    endResetModel();
}

int ListModel::add(const QString& key, const QString& text) {
    const int row = count();
    const qsizetype known = byKey_.size();
    int& place = byKey_[key];
    if (byKey_.size() == known) throw RuntimeError(errors::duplicateKey);
    place = row;
    if (!filling_) beginInsertRows({}, row, row);
    rows_.push_back({key, emptyRow_, 0});
    rows_.back().texts[0] = text;
    if (!filling_) {
        shown_ = count();
        endInsertRows();
    }
    return row;
}

int ListModel::indexOf(const QString& key) const {
    const auto found = byKey_.constFind(key);
    if (found == byKey_.constEnd()) throw RuntimeError(errors::elementNotFound);
    return *found;
}

void ListModel::setText(int row, int column, const QString& text) {
    QString& cell = at(row).texts[column];
    if (cell == text) return;
    cell = text;
    tellChanged(row, column, column, Qt::DisplayRole);
}

void ListModel::setColour(int row, Colour colour) {
    if (at(row).colour == colour) return;
    at(row).colour = colour;
    tellChanged(row, 0, static_cast<int>(captions_.size()) - 1, Qt::ForegroundRole);
}

void ListModel::tellChanged(int row, int firstColumn, int lastColumn, int role) {
    if (row < shown_) emit dataChanged(index(row, firstColumn), index(row, lastColumn), {role});
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_;
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(captions_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole) return text(index.row(), index.column());
    if (role == Qt::ForegroundRole) {
        const Colour colour = this->colour(index.row());
        // Black is what the desktop shows text in, which need not be black where it is dark.
        if (colour == 0) return {};
        return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
    }
    return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return captions_.value(section);
}
