#pragma once

#include <QGroupBox>

/// A group box with a thin border interrupted by its title: the look that the windows are laid out for, on
/// every system.
class Frame final : public QGroupBox {
    Q_OBJECT

 public:
    explicit Frame(QWidget* parent = nullptr);

 protected:
    void paintEvent(QPaintEvent* event) override;
};
