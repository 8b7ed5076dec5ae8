#pragma once

#include <QDialog>
#include <memory>

#include "toolkit/formContent.h"

namespace Ui {
class frmUser;
}

/// Edits one customer, a row of `tUser`. The boxes and the label with the key are the only state: a button
/// keeps them, closing the window resets them.
class frmUser final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmUser)

 public:
    /// Starts as for a new customer.
    explicit frmUser(QWidget* parent = nullptr);
    ~frmUser() override;

    /// Sets the customer by `USID`; 0 for a new one. Nothing is read.
    void setUSID(qint32 id);

    /// Shows the stored customer. A box whose column is Null or cannot be read stays as it is; a missing
    /// customer is reported in a box.
    void ReadData();

    /// Checks that name and address are filled in. A box lists what is missing.
    /// @param valid set to the result.
    void Kontrola(bool& valid);

    /// Stores the boxes, in a new row for a new customer. Without a personal code the `USID` is stored as the
    /// code, and the form then stands for that customer. Failures are skipped; a missing customer is reported
    /// in a box.
    void SaveData();

 protected:
    void closeEvent(QCloseEvent* event) override;
    /// Esc leaves only a form in which nothing was entered.
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    void empty();
    void save();
    void readColumns();

    std::unique_ptr<Ui::frmUser> ui_;
    formContent::Content stored_;  // content of the controls as read or stored last
};
