#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

namespace Ui {
class frmSplash;
}

/// The splash screen. It closes after five seconds or at any key.
class frmSplash final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmSplash)

 public:
    explicit frmSplash(QWidget* parent = nullptr);
    ~frmSplash() override;

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    std::unique_ptr<Ui::frmSplash> ui_;
    QTimer Timer1_{this};
};
