#pragma once

#include <QDialog>
#include <memory>

#include "core/Sites.h"

namespace Ui {
class frmNewVersion;
}

/// Offers the installer of a newer version by opening its address with the desktop. Closing the window stores
/// in `ShowNewVer` whether newer versions are offered at start: "N" when the box is checked, else "A". The
/// box is always unchecked at first.
class frmNewVersion final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmNewVersion)

 public:
    explicit frmNewVersion(const Sites& sites, QWidget* parent = nullptr);
    ~frmNewVersion() override;

    void done(int result) override;

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    std::unique_ptr<Ui::frmNewVersion> ui_;
};
