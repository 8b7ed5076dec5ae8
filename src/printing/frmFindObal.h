#pragma once

#include <QDialog>
#include <memory>

#include "core/Sites.h"

namespace Ui {
class frmFindObal;
}

/// Finds disc covers in the cover archive, shows one, saves it as a file or prints it in full size. It does
/// not use the catalogue.
class frmFindObal final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmFindObal)

 public:
    explicit frmFindObal(const Sites& sites, QWidget* parent = nullptr);
    ~frmFindObal() override;

    /// Sets the search term without searching.
    void setTerm(const QString& term);

    /// Appends the covers of a result page of the archive to the list. A box says when there is none.
    /// @throws RuntimeError 5 for a page without the list of covers.
    void ZpracujZaznamy(const QString& page);
    /// Adds the cover of one option of that list. One whose code is already listed is skipped.
    /// @throws RuntimeError 5 for an option without a code.
    void ZiskejData(const QString& option);

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void letGrow();
    /// Searches for the term; a failed download leaves the list empty.
    void search();
    /// Downloads the cover of the selected row; shows the preview page in any case.
    void fetch();
    void showPreview(bool shown);
    /// Copies the cover downloaded last to a file chosen by the user.
    void save();
    /// Appends the printers to the list of those offered before; without any it prints at once.
    void choosePrinter();
    void hidePrinters();
    void printOnChosen();
    void print();

    std::unique_ptr<Ui::frmFindObal> ui_;
    Sites sites_;
};
