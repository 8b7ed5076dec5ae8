#pragma once

#include <QHeaderView>

/// The header of a list whose last column reaches to the list's edge: it is painted, pressed and clicked
/// there, while the width of the column stays as set.
class ListHeader final : public QHeaderView {
    Q_OBJECT

 public:
    explicit ListHeader(QWidget* parent);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
    /// Where the header acts on a press at `position`.
    QPointF pressed(const QPointF& position) const;
    /// `event` at that place.
    QMouseEvent moved(const QMouseEvent& event) const;
};
