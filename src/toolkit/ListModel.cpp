#include "toolkit/ListModel.h"

#include <QColor>

#include "platform/errors.h"

ListModel::ListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ListModel::setCaptions(const QStringList& captions) {
    captions_ = captions;
    clear();
}

void ListModel::clear() {
    beginResetModel();
    texts_.reset(static_cast<int>(captions_.size()));
    colours_.clear();
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

int ListModel::add(QStringView key, QStringView text) {
    const int row = count();
    if (!texts_.add(key)) throw RuntimeError(errors::duplicateKey);
    texts_.setCell(row, 0, text);
    colours_.push_back(0);
    if (!filling_) {
        // Until the views are told, the row is there as a row of a fill is.
        beginInsertRows({}, row, row);
        shown_ = count();
        endInsertRows();
    }
    return row;
}

int ListModel::indexOf(QStringView key) const {
    const int row = texts_.find(key);
    if (row < 0) throw RuntimeError(errors::elementNotFound);
    return row;
}

void ListModel::setText(int row, int column, QStringView text) {
    if (texts_.cell(row, column) == text) return;
    texts_.setCell(row, column, text);
    tellChanged(row, column, column, Qt::DisplayRole);
}

void ListModel::setColour(int row, Colour colour) {
    Colour& held = colours_[static_cast<std::size_t>(row)];
    if (held == colour) return;
    held = colour;
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
