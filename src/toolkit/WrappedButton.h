#pragma once

#include <QPushButton>

/// A button whose caption goes on several lines where it is wider than the button.
class WrappedButton final : public QPushButton {
    Q_OBJECT

 public:
    explicit WrappedButton(QWidget* parent = nullptr);

 protected:
    void paintEvent(QPaintEvent* event) override;
};
