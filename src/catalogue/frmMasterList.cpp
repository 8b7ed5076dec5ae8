// Filling the main window's list from the database and updating it.

#include "catalogue/frmMaster.h"
#include "core/CatalogueQuery.h"
#include "core/mDatabase.h"
#include "core/mFunction.h"
#include "platform/Outside.h"
#include "rental/mPujcky.h"
#include "toolkit/rowKey.h"
#include "ui_frmMaster.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 black = 0;
constexpr quint32 green = 91137;  // RGB 1, 100, 1: on loan

constexpr int countPanel = 5;
constexpr int loansPanel = 6;

/// The columns shown in a list row, looked up once for all rows.
struct FilmFields {
    explicit FilmFields(const ado::Recordset& films)
        : id(films.Fields(u"DVDID")),
          katCisl(films.Fields(u"KatCisl")),
          czJm(films.Fields(u"CZJM")),
          zanr(films.Fields(u"Zanr")),
          puvJm(films.Fields(u"PuvJm")),
          jazyk(films.Fields(u"Jazyk")) {}

    ado::Field id;
    ado::Field katCisl;
    ado::Field czJm;
    ado::Field zanr;
    ado::Field puvJm;
    ado::Field jazyk;
};

/// Adds a row for the current film, unless its number is Null.
void fillRow(ListView& list, const FilmFields& film) {
    std::optional<ListItem> row;
    skipFailure([&] {
        DbValue katCisl = film.katCisl.Value();
        if (!katCisl.isNull())
            row = list.add(rowKey('K', film.id.Value().toLong()), NullNaText(std::move(katCisl)));
    });
    if (!row) return;  // not to be listed, or not readable at all
    skipFailure([&] { row->setSubItem(1, NullNaText(film.czJm.Value())); });
    skipFailure([&] { row->setSubItem(2, NullNaText(film.zanr.Value())); });
    skipFailure([&] { row->setSubItem(5, NullNaText(film.puvJm.Value())); });
    skipFailure([&] { row->setSubItem(6, JazykText(film.jazyk.Value().toLong())); });
}

/// Adds or updates the row of the current film.
void renewRow(ListView& list, const FilmFields& film) {
    std::optional<ListItem> row;
    skipFailure(
        [&] { row = list.add(rowKey('K', film.id.Value().toLong()), film.katCisl.Value().toText()); });
    if (!row) {
        skipFailure([&] { row = list.item(rowKey('K', film.id.Value().toLong())); });
        if (!row) return;  // a film without a number is not listed
        skipFailure([&] { row->setText(film.katCisl.Value().toText()); });
    }
    skipFailure([&] { row->setSubItem(1, film.czJm.Value().toText()); });
    skipFailure([&] { row->setSubItem(2, film.zanr.Value().toText()); });
    skipFailure([&] { row->setSubItem(3, {}); });
    skipFailure([&] { row->setSubItem(4, {}); });
    skipFailure([&] { row->setSubItem(5, film.puvJm.Value().toText()); });
    skipFailure([&] { row->setSubItem(6, JazykText(film.jazyk.Value().toLong())); });
    skipFailure([&] { BarvaPolozky(list, row->key(), black); });
}

}  // namespace

void frmMaster::NactiSeznam(const QString& sortColumn) {
    auto fill = std::make_unique<ListView::Fill>(*lvwList_);
    lvwList_->clear();
    CatalogueQuery films(u"SELECT * from tDVD Order by "_s + sortColumn, CatalogueQuery::Failures::skipped);
    std::optional<FilmFields> fields;
    while (!atEnd(*films, IfUnknown::row)) {
        if (Err.pending()) {
            fill.reset();  // so that the list behind the box shows the rows read so far
            MsgBox(this, u"Došlo k chybě:\n"_s + Err.Description(), boxStyle::plain,
                   u"Chyba číslo: "_s + QString::number(Err.Number()));
            Err.Clear();
            break;
        }
        if (!fields) skipFailure([&] { fields.emplace(*films); });
        if (fields) fillRow(*lvwList_, *fields);
        skipFailure([&] { films->MoveNext(); });
    }
    skipFailure([&] {
        ui_->sbMain->setPanelText(countPanel, u"  Celkem záznamů : %1  "_s.arg(films->RecordCount()));
    });
    films.reopen(openLoansSql());
    paintLoans(*films);
}

void frmMaster::paintLoans(ado::Recordset& loans) {
    while (!atEnd(loans, IfUnknown::row)) {
        if (Err.pending()) break;
        std::optional<ListItem> row;
        skipFailure([&] { row = lvwList_->item(rowKey('K', loans.Fields(u"DVDID").Value().toLong())); });
        if (row) {
            skipFailure([&] { BarvaPolozky(*lvwList_, row->key(), green); });
            skipFailure([&] { row->setSubItem(3, loans.Fields(u"USNAME").Value().toText()); });
            skipFailure([&] { row->setSubItem(4, loans.Fields(u"PDatPujcky").Value().toText()); });
        }
        skipFailure([&] { loans.MoveNext(); });
    }
    skipFailure([&] {
        ui_->sbMain->setPanelText(loansPanel, u"  Vypůjčených záznamů : %1  "_s.arg(loans.RecordCount()));
    });
}

void frmMaster::ObnovZaznam(qint32 id) {
    {
        CatalogueQuery films(u"SELECT * from tDVD WHERE DVDID ="_s + QString::number(id),
                             CatalogueQuery::Failures::skipped);
        skipFailure([&] {
            if (films->Eof()) return;
            const FilmFields fields(*films);
            renewRow(*lvwList_, fields);
        });
        films.reopen(openLoansSql());
        paintLoans(*films);
    }
    enableCommands();
}

void frmMaster::Recolor() {
    lvwList_->setForeColorOfAll(black);
}
