#pragma once

#include <QDialog>
#include <memory>

class SharedUser;
namespace Ui {
class frmPujcDVD;
}

/// The dialog that lends one film to a customer chosen by name. Each lending has a dialog of its own; several
/// can be open at a time, also for the same film.
class frmPujcDVD final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmPujcDVD)

 public:
    /// Offers all customers, the first by name chosen.
    /// @param user the form in which a customer is added.
    explicit frmPujcDVD(std::shared_ptr<SharedUser> user, QWidget* parent = nullptr);
    ~frmPujcDVD() override;

    /// Takes the film to lend, and its title for the caption.
    void Init(qint32 DVDID, const QString& Title);

    /// Fills the list of customers anew and chooses the first. What cannot be read is left out.
    void ReadData();

    /// Stores the loan under the chosen customer's `USID` and closes the dialog. Without any customer a box
    /// tells so and the dialog stays.
    /// @throws RuntimeError when the loan cannot be stored.
    void Zapujcit();

    /// True once the dialog has been answered by one of its buttons, whether or not that led to a loan.
    bool Ukonceno = false;
    /// `DVDID` of the film to lend.
    qint32 FilmID = 0;

    /// As "Storno" does.
    void reject() override;

 signals:
    /// The dialog has been answered for the first time, and what the answer does is done.
    void answered();

 protected:
    /// Closing by the frame answers nothing.
    void closeEvent(QCloseEvent* event) override;

 private:
    template <typename Work>
    void answer(Work&& work);

    std::unique_ptr<Ui::frmPujcDVD> ui_;
    std::shared_ptr<SharedUser> user_;
};
