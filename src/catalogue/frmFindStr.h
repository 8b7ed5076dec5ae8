#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmFindStr;
}

/// Asks for a search term. The caller sets the caption.
class frmFindStr final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmFindStr)

 public:
    explicit frmFindStr(QWidget* parent = nullptr);
    ~frmFindStr() override;

    /// The term; empty unless the button was pressed.
    QString HledanyText;

 private:
    std::unique_ptr<Ui::frmFindStr> ui_;
};
