#pragma once

#include <QDialog>
#include <memory>

class SharedUser;
namespace Ui {
class frmPujcDVD;
}

/// Lends one film to a customer chosen by name. Several of these dialogs can be open at a time, even for the
/// same film.
class frmPujcDVD final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmPujcDVD)

 public:
    /// Lists all customers and selects the first by name.
    /// @param user the form in which a customer is added.
    explicit frmPujcDVD(std::shared_ptr<SharedUser> user, QWidget* parent = nullptr);
    ~frmPujcDVD() override;

    /// Sets the film to lend, and its title for the caption.
    void Init(qint32 DVDID, const QString& Title);

    /// Refills the list of customers and selects the first. Rows that cannot be read are left out.
    void ReadData();

    /// Stores the loan under the selected customer's `USID` and closes the dialog. Without any customer a box
    /// is shown and the dialog stays open.
    /// @throws RuntimeError when the loan cannot be stored.
    void Zapujcit();

    /// True once one of the buttons was pressed, whether or not that led to a loan.
    bool Ukonceno = false;
    /// `DVDID` of the film to lend.
    qint32 FilmID = 0;

    /// As "Storno" does.
    void reject() override;

 signals:
    /// A button was pressed for the first time and its action has finished.
    void answered();

 protected:
    /// Closing the window is not an answer.
    void closeEvent(QCloseEvent* event) override;

 private:
    template <typename Work>
    void answer(Work&& work);

    std::unique_ptr<Ui::frmPujcDVD> ui_;
    std::shared_ptr<SharedUser> user_;
};
