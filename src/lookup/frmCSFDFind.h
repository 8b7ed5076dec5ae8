#pragma once

#include <QDialog>
#include <memory>

#include "core/Sites.h"
#include "lookup/LookupBoxes.h"
#include "lookup/mDetail.h"

namespace Ui {
class frmCSFDFind;
}

/// The lookup of a film on the film database: searches by title, reads the data of a film found, and lets the
/// user correct them. It lives for one lookup.
class frmCSFDFind final : public QDialog, private csfd::DetailWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmCSFDFind)

 public:
    explicit frmCSFDFind(const Sites& sites, QWidget* parent = nullptr);
    ~frmCSFDFind() override;

    /// The term to look for, as the user may change it.
    void setTerm(const QString& term);

    /// Searches for a term and adds the films found behind those of earlier searches. A download that fails
    /// is told in a box, and the list stays as it is.
    void Hledej(const QString& term);

    /// Adds the films of the page read last to the list and tells their number.
    void NactiSeznamFilmu();

    /// What the fields hold.
    LookupResult result() const;

    /// True when the user has accepted the result.
    bool VlozitData = false;

    void reject() override;

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
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
