#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmUser;
}

/// The form for one customer, a row of `tUser`. Its boxes and the label with the key are its only state: the
/// form keeps them when it is answered, and is as new after it was closed by its frame.
class frmUser final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmUser)

 public:
    /// Stands as for a new customer.
    explicit frmUser(QWidget* parent = nullptr);
    ~frmUser() override;

    /// Names the customer by `USID`; 0 for a new one. Nothing is read.
    void setUSID(qint32 id);

    /// Shows the stored customer. A box whose column is Null or cannot be read stays as it is; a customer
    /// that is not there is told in a box.
    void ReadData();

    /// Whether name and address are there. A box tells what is missing.
    /// @param valid set to the result.
    void Kontrola(bool& valid);

    /// Stores the boxes, as a new row when the customer is new. Without a personal code the customer's `USID`
    /// becomes it, and the form names that customer from then on. What fails is skipped; a customer that is
    /// not there is told in a box.
    void SaveData();

 protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

 private:
    void empty();
    void save();

    std::unique_ptr<Ui::frmUser> ui_;
};
