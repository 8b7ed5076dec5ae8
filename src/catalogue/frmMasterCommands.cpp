// The main window's commands on films and loans, searching and sorting.

#include "catalogue/frmFindStr.h"
#include "catalogue/frmMaster.h"
#include "catalogue/modSortLvw.h"
#include "core/CatalogueQuery.h"
#include "film/frmDVD.h"
#include "platform/Outside.h"
#include "platform/text.h"
#include "printing/frmFindObal.h"
#include "rental/frmPujcDVD.h"
#include "rental/mPujcky.h"
#include "services/frmNewVersion.h"
#include "services/novaVerze.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int numberColumn = 0;
constexpr int loanDateColumn = 4;

/// Deletes a film; failures are skipped. Its loans and pictures stay, but no join returns them any more.
void deleteFilm(qint32 id) {
    const CatalogueQuery film(u"SELECT * FROM tDVD WHERE DVDID="_s + QString::number(id) + u';',
                              CatalogueQuery::Failures::skipped);
    if (atEnd(*film)) return;
    skipFailure([&] { film->Delete(1); });
    skipFailure([&] { film->Update(); });
}

SortType typeOf(int column) {
    switch (column) {
        case numberColumn:
            return SortType::number;
        case loanDateColumn:
            return SortType::date;
        default:
            return SortType::text;
    }
}

}  // namespace

void frmMaster::OtevritPridatZaznam(qint32 id) {
    frmDVD editor(sites_, this);
    editor.Inicializuj(id);
    editor.exec();
    if (editor.Vysledek == 1) ObnovZaznam(editor.IDFilmu);
}

void frmMaster::PujcitVratit() {
    const ListItem film = lvwList_->selectedItem();
    const qint32 id = selectedFilm();
    if (text::trim(film.subItem(3)).isEmpty()) {
        lend(id, film.subItem(1));
        return;
    }
    // The quote in this question is never closed.
    const BoxAnswer answer = MsgBox(this, u"Opravdu vrátit film : \" "_s + film.subItem(1) + u" ?"_s,
                                    boxStyle::question | boxStyle::yesNo, u"Ověření"_s);
    if (answer != BoxAnswer::yes) return;
    vratitFilm(id);
    ObnovZaznam(id);
}

void frmMaster::lend(qint32 id, const QString& title) {
    auto& dialog = makeSelfOwned<frmPujcDVD>(user_);
    dialog.Init(id, title);
    // The row shows the loan only then, so until then the film can be lent once more.
    connect(&dialog, &frmPujcDVD::answered, this, [this, id] { ObnovZaznam(id); });
    ownedWindows_.show(dialog, *this);
}

void frmMaster::vratitFilm(qint32 id) {
    const CatalogueQuery loan(openLoansSql(u" and tDVD.DVDID="_s + QString::number(id)),
                              CatalogueQuery::Failures::skipped);
    if (atEnd(*loan)) return;
    skipFailure([&] { loan->Fields(u"PDATVRACENI").setValue(Outside::current().now()); });
    skipFailure([&] { loan->Update(); });
}

void frmMaster::SmazatZaznam(qint32 id) {
    const QString title = lvwList_->selectedItem().subItem(1);
    const BoxAnswer answer =
        MsgBox(this, u"Opravdu vymazat záznam ("_s + title + u")?"_s, boxStyle::information | boxStyle::yesNo,
               u"Ověření požadavku na smazání."_s);
    if (answer == BoxAnswer::no) return;
    deleteFilm(id);
    NactiSeznam(u"CZJM"_s);
}

void frmMaster::najit(const QString& mode, const QString& caption) {
    frmFindStr prompt(this);
    prompt.setWindowTitle(caption);
    // A cancelled prompt gives an empty term, which is searched for like any other.
    prompt.exec();
    NajdiText(mode, prompt.HledanyText);
}

void frmMaster::NajdiText(const QString& mode, const QString& term) {
    FindMode findMode = FindMode::number;
    if (mode == u"CZ") findMode = FindMode::czechTitle;
    if (mode == u"PUV") findMode = FindMode::loanDate;
    const int row = findRow(*lvwList_, findMode, term);
    if (row < 0) {
        MsgBox(this, u"Záznam nenalezen"_s, boxStyle::information, u"Vyhledávání výrazu: "_s + term);
        return;
    }
    const ListItem found = lvwList_->itemAt(row);
    lvwList_->select(found);
    lvwList_->ensureVisible(found);
}

void frmMaster::findCover(const QString& title) {
    frmFindObal covers(sites_, this);
    covers.setTerm(title);
    covers.exec();
}

void frmMaster::findNewVersion() {
    if (JeNovaVerze(sites_)) {
        frmNewVersion(sites_, this).exec();
    } else {
        MsgBox(this, u"Máte nejaktuálnější verzi aplikace."_s, boxStyle::information,
               u"Dotaz na novou verzi"_s);
    }
}

void frmMaster::sortByColumn(int column) {
    TridSloupec(*lvwList_, column, typeOf(column));
    Recolor();
}
