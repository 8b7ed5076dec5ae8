#pragma once

#include <QDialog>
#include <memory>

#include "core/Sites.h"
#include "lookup/LookupBoxes.h"
#include "lookup/mDetail.h"

namespace Ui {
class frmCSFDFind;
}

/// Looks up a film in the film database: searches by title, reads the data of the selected film and lets the
/// user correct them. One window serves one lookup.
class frmCSFDFind final : public QDialog, private csfd::DetailWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmCSFDFind)

 public:
    explicit frmCSFDFind(const Sites& sites, QWidget* parent = nullptr);
    ~frmCSFDFind() override;

    /// Fills the search box.
    void setTerm(const QString& term);

    /// Searches for a term and appends the films found to those of earlier searches. A failed download is
    /// reported in a message box and leaves the list as it is.
    void Hledej(const QString& term);

    /// Appends the films of the page read last to the list and shows the number of rows.
    void NactiSeznamFilmu();

    /// The contents of the fields.
    LookupResult result() const;

    /// True when the user has accepted the result.
    bool VlozitData = false;

    void reject() override;

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void letGrow();
    void readSelected();

    int selectedRow() const override;
    QString selectedPath() const override;
    QString text(LookupField field) const override;
    void setText(LookupField field, const QString& text) override;
    void clearOtherTitles() override;
    void addOtherTitle(const QString& title) override;
    void showPicture(const QString& path) override;
    void showPosterChoice() override;
    void untickPosterChoice() override;
    void showStage(const QString& caption) override;
    void showWait() override;
    void hideWait() override;
    void repaintFields() override;
    void yield() override;

    std::unique_ptr<Ui::frmCSFDFind> ui_;
    LookupBoxes boxes_;
    Sites sites_;
    csfd::Buffers buffers_;
};
