#pragma once

#include <QDialog>
#include <memory>

#include "core/Sites.h"

namespace Ui {
class frmFindObal;
}

/// Finds disc covers in the cover archive, shows one, saves it as a file or prints it in full size. It
/// neither reads nor writes the catalogue.
class frmFindObal final : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmFindObal)

 public:
    explicit frmFindObal(const Sites& sites, QWidget* parent = nullptr);
    ~frmFindObal() override;

    /// The term to look for, as the user may change it. It is not looked for yet.
    void setTerm(const QString& term);

    /// Fills the list with the covers that a result page of the archive names, behind those it holds. A box
    /// tells when there is none. @throws RuntimeError 5 for a page without the list of covers.
    void ZpracujZaznamy(const QString& page);
    /// Adds the cover of one option of that list. One whose code is in the list already is skipped.
    /// @throws RuntimeError 5 for an option without a code.
    void ZiskejData(const QString& option);

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    /// Looks for the term; a page that cannot be had leaves the list empty.
    void search();
    /// Fetches the cover of the selected row and shows the preview page in any case.
    void fetch();
    void showPreview(bool shown);
    /// Copies the cover fetched last to where the user wants it.
    void save();
    /// Offers the printers, each time behind those offered before; without any it prints at once.
    void choosePrinter();
    void hidePrinters();
    void print();

    std::unique_ptr<Ui::frmFindObal> ui_;
    Sites sites_;
};
