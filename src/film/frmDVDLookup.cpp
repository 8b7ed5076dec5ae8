// Filling the film editor from web lookups.

#include <algorithm>

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
    if (!text::trim(found).isEmpty()) textBox::setText(box, found);
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
        MsgBox(this, u"Vyhledávání v obchodě nelze otevřít:\n"_s + failure.description(), boxStyle::critical);
        return;
    }
    lookup->exec();
    if (!lookup->VlozitData) return;
    const LookupResult found = lookup->result();
    const QString originalTitle = found.originalTitle == u"&nbsp;" ? u" "_s : found.originalTitle;
    textBox::setText(*ui_->txtCZName, found.czechTitle);
    textBox::setText(*ui_->txtDelka, found.length);
    textBox::setText(*ui_->txtPuvName, originalTitle);
    textBox::setText(*ui_->txtHerci, found.cast);
    textBox::setText(*ui_->txtPopis, found.description);
    textBox::setText(*ui_->txtRezie, found.director);
    textBox::setText(*ui_->txtStat, film::shortCountry(found.country));
    textBox::setText(*ui_->txtZanr, found.genre);
    textBox::setText(*ui_->txtRok, found.year);
    takePreview(found);
    goOnAfterLookup();
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
    goOnAfterLookup();
}

void frmDVD::goOnAfterLookup() {
    const auto isBlank = [](const QWidget* field) {
        const auto* line = qobject_cast<const QLineEdit*>(field);
        return text::trim(line != nullptr ? line->text()
                                          : textBox::text(*qobject_cast<const QPlainTextEdit*>(field)))
            .isEmpty();
    };
    const std::pair<int, QList<QWidget*>> pages[] = {
        {0, {ui_->txtCZName, ui_->txtPuvName, ui_->txtZanr, ui_->txtPopis}},
        {1, {ui_->txtStat, ui_->txtRok, ui_->txtRezie, ui_->txtDelka, ui_->txtHerci}}};
    for (const auto& [page, fields] : pages) {
        const auto blank = std::find_if(fields.begin(), fields.end(), isBlank);
        if (blank == fields.end()) continue;
        ui_->tabMain->setCurrentIndex(page);
        (*blank)->setFocus();
        return;
    }
    ui_->cmdSave->setFocus();
}

void frmDVD::takePreview(const LookupResult& found) {
    if (!found.withPicture) return;
    imgObalDesk_[1]->loadPicture(found.picturePath);
    ui_->lblNahled->setText(found.picturePath);
}
