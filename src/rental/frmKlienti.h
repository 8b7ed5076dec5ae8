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

/// The rental window: the list of customers and, opened over it, panels to lend films to the selected
/// customer, to take films back, and to show what has been returned. The selected customer is read again at
/// every use.
class frmKlienti final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmKlienti)

 public:
    /// Fills the list of customers; all panels are hidden.
    /// @param user the form in which a customer is added.
    explicit frmKlienti(std::shared_ptr<SharedUser> user, QWidget* parent = nullptr);
    ~frmKlienti() override;

    /// Refills the list of customers, by name, and selects the first. Failures are skipped; a customer
    /// without a personal code is not listed.
    void NactiList();

    /// Fill and show a panel for the selected customer. Without one a box is shown instead.
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

    bool nameCustomer(ElidedLabel& title, const QString& heading);
    void showPanel(QWidget& panel);
    void hidePanel(QWidget& panel);
    /// Moves the focus to the topmost panel and disables what it covers.
    void focusTop();

    /// Lends or returns the selected films of a list one by one under the selected customer's personal code,
    /// which is read for each.
    /// @throws RuntimeError 13 or 6 when the code is no 32-bit number, and as `work` does. Films handled
    ///         before stay lent or returned.
    void forSelected(const ListBox& films, void (*work)(qint32 UID, qint32 DVDID)) const;

    std::unique_ptr<Ui::frmKlienti> ui_;
    std::shared_ptr<SharedUser> user_;
    QList<QWidget*> shown_;  // visible panels, topmost last
};
