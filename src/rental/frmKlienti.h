#pragma once

#include <QList>
#include <QWidget>
#include <memory>

class ElidedLabel;
class ListBox;
class SharedUser;
namespace Ui {
class frmKlienti;
}

/// The rental window: the list of customers, over which three panels open, to lend films to the selected
/// customer, to take films back, and to read what has been returned. The selected customer is read anew
/// at every use.
class frmKlienti final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmKlienti)

 public:
    /// Fills the list of customers; all panels are hidden.
    /// @param user the form in which a customer is added.
    explicit frmKlienti(std::shared_ptr<SharedUser> user, QWidget* parent = nullptr);
    ~frmKlienti() override;

    /// Fills the list of customers anew, by name. The first one is selected then. What fails is skipped; a
    /// customer without a personal code is not listed.
    void NactiList();

    /// Each fills a panel for the selected customer and shows it; without one a box tells so, and nothing is
    /// shown.
    void Historie_Obnovit();
    void KVypujceni_Obnovit();
    void Vratit_Obnovit();

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void paintPanels();
    void buildList();
    void buildToolBar();
    void connectButtons();

    void addCustomer();
    /// @throws RuntimeError 91 when no customer is selected.
    void editCustomer();
    void findCustomer();
    qint32 selectedUSID() const;

    bool nameCustomer(ElidedLabel& title, const QString& heading) const;
    void showPanel(QWidget& panel);
    void hidePanel(QWidget& panel);
    /// Gives the keyboard to what lies on top, and takes it from what is covered.
    void focusTop();

    /// Lends or returns the selected films of a list one by one, each under the personal code of the customer
    /// selected then.
    /// @throws RuntimeError 13 or 6 when the code is no 32-bit number, and as `work` does. What was done
    /// before
    ///         stays done.
    void forSelected(const ListBox& films, void (*work)(qint32 UID, qint32 DVDID)) const;

    std::unique_ptr<Ui::frmKlienti> ui_;
    std::shared_ptr<SharedUser> user_;
    QList<QWidget*> shown_;  // panels, the last one shown at the end
};
