#pragma once

#include <QDialog>
#include <memory>

#include "core/Sites.h"
#include "lookup/LookupBoxes.h"
#include "lookup/mObchod.h"
#include "toolkit/Browser.h"

namespace Ui {
class frmNetFind;
}

/// Looks up a film in the disc shop with two browsers: one shows the search form and receives the list of
/// films, the other, never visible, loads the page of one film. Only their events drive the window. One
/// window serves one lookup.
class frmNetFind final : public QDialog, private obchod::DetailWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmNetFind)

 public:
    /// Shows the search form.
    frmNetFind(const Sites& sites, BrowserFactory& browsers, QWidget* parent = nullptr);
    ~frmNetFind() override;

    /// Fills the search form with a title and submits it.
    /// @throws RuntimeError 53 when the template of the form is missing, 75 when the form cannot be written.
    void PredpripravSTR(const QString& title);

    /// Fills the list from the list page loaded last and shows the number of films.
    /// @throws RuntimeError as obchod::NactiSeznamObchod does.
    void NactiSeznamObchod();

    /// The contents of the fields.
    LookupResult result() const;

    /// True when the user has accepted the result.
    bool VlozitData = false;

    void reject() override;

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void makeBrowsers(BrowserFactory& browsers);
    void searchStarts(const QString& url);
    void listIsThere(const QString& url);
    void filmIsThere(const QString& url);
    void loadSelected();
    void showProgress(int progress, int maximum);
    void resizeTo(int width, int height);

    QString text(LookupField field) const override;
    void setText(LookupField field, const QString& text) override;
    void showPicture(const QString& path) override;
    void repaintPicture() override;
    void stopBrowser() override;
    void showWait() override;
    void hideWait() override;
    void yield() override;

    std::unique_ptr<Ui::frmNetFind> ui_;
    LookupBoxes boxes_;
    Sites sites_;
    QString listPage_;
    QString filmPage_;
    bool reading_ = false;  // from the choice of a film until its data are shown
    std::unique_ptr<Browser> wbrFind_;
    std::unique_ptr<Browser> WebBrowser1_;
};
