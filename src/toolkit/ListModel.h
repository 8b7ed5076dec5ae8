#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <vector>

#include "toolkit/RowTexts.h"

/// The flat model behind a list in report view: rows with a key, one text per column and one colour.
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

    /// Adds a row at the end, with `text` in the first column, in black.
    /// @return its index. @throws RuntimeError 457 when the key is taken.
    int add(QStringView key, QStringView text);
    /// @throws RuntimeError 35601 when no row has the key.
    int indexOf(QStringView key) const;

    QString key(int row) const { return texts_.key(row).toString(); }
    QString text(int row, int column) const { return texts_.cell(row, column).toString(); }
    /// Setting what a cell holds already tells the views nothing, as does setColour.
    void setText(int row, int column, QStringView text);
    Colour colour(int row) const { return colours_[static_cast<std::size_t>(row)]; }
    void setColour(int row, Colour colour);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
    void tellChanged(int row, int firstColumn, int lastColumn, int role);

    QStringList captions_;
    RowTexts texts_;
    std::vector<Colour> colours_;
    int shown_ = 0;  // rows that the views know of
    bool filling_ = false;
};
