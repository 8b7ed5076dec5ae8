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

    /// Shows the stored customer. A box whose column is Null stays as it is. A customer that is missing or
    /// cannot be read is reported in a box; then nothing can be entered, and nothing is stored over it.
    void ReadData();

    /// Checks that name and address are filled in. A box lists what is missing.
    /// @param valid set to the result.
    void Kontrola(bool& valid);

    /// Stores the boxes, in a new row for a new customer. Without a personal code the `USID` is stored as the
    /// code, and the form then stands for that customer. Failures are skipped; a customer that is missing or
    /// has not been read is reported in a box.
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
    /// Whether the customer could not be read, so that the boxes do not show it.
    void setUnread(bool unread);

    std::unique_ptr<Ui::frmUser> ui_;
    bool unread_ = false;
    formContent::Content stored_;  // content of the controls as read or stored last
};
