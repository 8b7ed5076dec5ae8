#pragma once

#include <QPushButton>

/// A button that wraps its caption.
class WrappedButton final : public QPushButton {
    Q_OBJECT

 public:
    explicit WrappedButton(QWidget* parent = nullptr);

 protected:
    void paintEvent(QPaintEvent* event) override;
};
