// Filling the film editor from web lookups.

#include "film/frmDVD.h"
#include "lookup/frmCSFDFind.h"
#include "lookup/frmNetFind.h"
#include "platform/Outside.h"
#include "platform/errors.h"
#include "platform/text.h"
#include "toolkit/textBox.h"
#include "ui_frmDVD.h"

using namespace Qt::StringLiterals;

namespace {

/// Keeps the current text when nothing was found.
void takeUnlessBlank(QLineEdit& box, const QString& found) {
    if (!text::trim(found).isEmpty()) box.setText(found);
}

void takeUnlessBlank(QPlainTextEdit& box, const QString& found) {
    if (!text::trim(found).isEmpty()) textBox::setText(box, found);
}

}  // namespace

void frmDVD::lookUpInShop() {
    std::unique_ptr<frmNetFind> lookup;
    try {
        lookup = std::make_unique<frmNetFind>(sites_, browserFactory(), this);
        const QString term = text::trim(ui_->txtCZName->text());
        if (!term.isEmpty()) lookup->PredpripravSTR(term);
    } catch (const RuntimeError& failure) {
        // A missing browser plugin must not lose the film being entered.
        MsgBox(u"Vyhledávání v obchodě nelze otevřít:\n"_s + failure.description(), boxStyle::critical);
        return;
    }
    lookup->exec();
    if (!lookup->VlozitData) return;
    const LookupResult found = lookup->result();
    const QString originalTitle = found.originalTitle == u"&nbsp;" ? u" "_s : found.originalTitle;
    ui_->txtCZName->setText(found.czechTitle);
    ui_->txtDelka->setText(found.length);
    ui_->txtPuvName->setText(originalTitle);
    textBox::setText(*ui_->txtHerci, found.cast);
    textBox::setText(*ui_->txtPopis, found.description);
    ui_->txtRezie->setText(found.director);
    ui_->txtStat->setText(film::shortCountry(found.country));
    ui_->txtZanr->setText(found.genre);
    ui_->txtRok->setText(found.year);
    takePreview(found);
}

void frmDVD::lookUpInFilmDatabase() {
    frmCSFDFind lookup(sites_, this);
    const QString term = text::trim(ui_->txtCZName->text());
    if (!term.isEmpty()) lookup.setTerm(term);
    lookup.exec();
    if (!lookup.VlozitData) return;
    const LookupResult found = lookup.result();
    takeUnlessBlank(*ui_->txtCZName, found.czechTitle);
    takeUnlessBlank(*ui_->txtDelka, found.length);
    takeUnlessBlank(*ui_->txtPuvName, found.originalTitle);
    takeUnlessBlank(*ui_->txtHerci, found.cast);
    takeUnlessBlank(*ui_->txtPopis, found.description);
    takeUnlessBlank(*ui_->txtRezie, found.director);
    takeUnlessBlank(*ui_->txtStat, film::shortCountry(found.country));
    takeUnlessBlank(*ui_->txtZanr, found.genre);
    takeUnlessBlank(*ui_->txtRok, found.year);
    takePreview(found);
}

void frmDVD::takePreview(const LookupResult& found) {
    if (!found.withPicture) return;
    imgObalDesk_[1]->loadPicture(found.picturePath);
    ui_->lblNahled->setText(found.picturePath);
}
