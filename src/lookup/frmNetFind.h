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

/// The lookup of a film in the disc shop. Two browsers do it: one holds the search form and receives the list
/// of films, the other, which is never seen, the page of one film. The window goes on by what they tell
/// alone. It lives for one lookup.
class frmNetFind final : public QDialog, private obchod::DetailWindow {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmNetFind)

 public:
    /// Shows the search form.
    frmNetFind(const Sites& sites, BrowserFactory& browsers, QWidget* parent = nullptr);
    ~frmNetFind() override;

    /// Has the search form filled with a title and sent.
    /// @throws RuntimeError 53 when the form's template is not there, 75 when the form cannot be written.
    void PredpripravSTR(const QString& title);

    /// Fills the list from the list page read last and tells the number of its films.
    /// @throws RuntimeError for a link without a number in the form that the shop gives.
    void NactiSeznamObchod();

    /// What the fields hold.
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
    QString listPage_;  // the page of the list
    QString filmPage_;  // the page of the film
    std::unique_ptr<Browser> wbrFind_;
    std::unique_ptr<Browser> WebBrowser1_;
};
