#pragma once

#include <QLabel>

/// A label of one line that ends in an ellipsis when its text needs more room, and tells the whole text as
/// tool tip then. The text is shown as it stands, with no mark-up in it.
class ElidedLabel final : public QLabel {
    Q_OBJECT

 public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

 protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
