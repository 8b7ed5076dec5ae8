#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmAbout;
}

/// Shows the program's name, version and maker.
class frmAbout final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmAbout)

 public:
    explicit frmAbout(QWidget* parent = nullptr);
    ~frmAbout() override;

 private:
    std::unique_ptr<Ui::frmAbout> ui_;
};
