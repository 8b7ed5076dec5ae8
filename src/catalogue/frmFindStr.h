#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmFindStr;
}

/// Asks for a search term. Its caption is the caller's.
class frmFindStr final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmFindStr)

 public:
    explicit frmFindStr(QWidget* parent = nullptr);
    ~frmFindStr() override;

    /// The term; empty unless the window was left by its button.
    QString HledanyText;

 private:
    std::unique_ptr<Ui::frmFindStr> ui_;
};
