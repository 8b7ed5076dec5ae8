#pragma once

#include <QDialog>
#include <memory>

#include "printing/filmLists.h"

namespace Ui {
class frmTisknout;
}

/// Offers the four film lists. While one is printed another can be started, which runs nested in it; the
/// window closes when the outermost has finished.
class frmTisknout final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmTisknout)

 public:
    explicit frmTisknout(QWidget* parent = nullptr);
    ~frmTisknout() override;

    void done(int result) override;

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void print(const QString& sql, filmLists::Kind kind);

    std::unique_ptr<Ui::frmTisknout> ui_;
    int running_ = 0;
    bool closing_ = false;
};
