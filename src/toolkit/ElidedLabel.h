#pragma once

#include <QLabel>

/// A single-line label that elides text that does not fit and shows all of it as a tool tip. The text is
/// plain text.
class ElidedLabel final : public QLabel {
    Q_OBJECT

 public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

 protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
