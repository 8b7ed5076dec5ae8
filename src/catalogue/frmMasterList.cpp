// How the main window's list is filled from the database and kept up to date.

#include "catalogue/frmMaster.h"
#include "core/mDatabase.h"
#include "core/mFunction.h"
#include "core/mFunctionList.h"
#include "platform/Outside.h"
#include "ui_frmMaster.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 black = 0;
constexpr quint32 green = 91137;  // RGB 1, 100, 1: on loan

constexpr int countPanel = 5;
constexpr int loansPanel = 6;

QString openLoansSql() {
    return u"SELECT tDVD.DVDID, tPujcky.P_UID, tPujcky.P_DVDID, tPujcky.PDatPujcky,tPujcky.PDatVraceni, "
           "tUser.USID, tUser.USNAME FROM tUser INNER JOIN (tDVD INNER JOIN tPujcky ON tDVD.DVDID = "
           "tPujcky.P_DVDID) ON tUser.USID = tPujcky.P_UID WHERE (((tPujcky.PDatVraceni) Is Null));"_s;
}

QString rowKey(const ado::Recordset& films) {
    return u'K' + films.Fields(u"DVDID").Value().toText();
}

/// Where failures are skipped, an end test that fails does not end a loop: the body runs and sees the
/// failure.
bool notAtEnd(const ado::Recordset& recordset) {
    bool end = false;
    skipFailure([&] { end = recordset.Eof(); });
    return !end;
}

/// Opens the catalogue with no failure pending before or after.
void openCatalogue() {
    Err.Clear();
    skipFailure([] { OpenDB(); });
    Err.Clear();
}

void closeCatalogue() {
    skipFailure([] { CloseRS(); });
    skipFailure([] { CloseDB(); });
}

}  // namespace

void frmMaster::NactiSeznam(const QString& sortColumn) {
    openCatalogue();
    const ListView::Fill fill(*lvwList_);
    lvwList_->clear();
    OpenRS(u"SELECT * from tDVD Order by "_s + sortColumn, false);
    Err.Clear();
    auto films = RsDB;
    while (notAtEnd(*films)) {
        if (Err.pending()) {
            MsgBox(u"Došlo k chybě:\n"_s + Err.Description(), boxStyle::plain,
                   u"Chyba číslo: "_s + QString::number(Err.Number()));
            Err.Clear();
            break;
        }
        fillRow(*films);
        skipFailure([&] { films->MoveNext(); });
    }
    skipFailure([&] {
        ui_->sbMain->setPanelText(countPanel, u"  Celkem záznamů : %1  "_s.arg(films->RecordCount()));
    });
    films.reset();
    skipFailure([] { CloseRS(); });
    paintLoans();
    closeCatalogue();
}

void frmMaster::fillRow(const ado::Recordset& films) {
    bool listed = true;  // a test that fails lets the branch run
    skipFailure([&] { listed = !films.Fields(u"KatCisl").Value().isNull(); });
    if (!listed) return;
    std::optional<ListItem> row;
    skipFailure([&] { row = lvwList_->add(rowKey(films), NullNaText(films.Fields(u"KatCisl").Value())); });
    if (!row) return;  // each of the statements below would fail on the missing row
    skipFailure([&] { row->setSubItem(1, NullNaText(films.Fields(u"CZJM").Value())); });
    skipFailure([&] { row->setSubItem(2, NullNaText(films.Fields(u"Zanr").Value())); });
    skipFailure([&] { row->setSubItem(5, NullNaText(films.Fields(u"PuvJm").Value())); });
    skipFailure([&] { row->setSubItem(6, JazykText(films.Fields(u"Jazyk").Value().toLong())); });
}

void frmMaster::paintLoans() {
    OpenRS(openLoansSql(), false);
    auto loans = RsDB;
    while (notAtEnd(*loans)) {
        if (Err.pending()) break;
        std::optional<ListItem> row;
        skipFailure([&] { row = lvwList_->item(rowKey(*loans)); });
        if (row) {
            skipFailure([&] { BarvaPolozky(*lvwList_, row->key(), green); });
            skipFailure([&] { row->setSubItem(3, loans->Fields(u"USNAME").Value().toText()); });
            skipFailure([&] { row->setSubItem(4, loans->Fields(u"PDatPujcky").Value().toText()); });
        }
        skipFailure([&] { loans->MoveNext(); });
    }
    skipFailure([&] {
        ui_->sbMain->setPanelText(loansPanel, u"  Vypůjčených záznamů : %1  "_s.arg(loans->RecordCount()));
    });
}

void frmMaster::ObnovZaznam(qint32 id) {
    openCatalogue();
    OpenRS(u"SELECT * from tDVD WHERE DVDID ="_s + QString::number(id), false);
    Err.Clear();
    auto films = RsDB;
    bool found = false;
    skipFailure([&] { found = !films->Eof(); });
    if (found) renewRow(*films);
    films.reset();
    skipFailure([] { CloseRS(); });
    paintLoans();
    closeCatalogue();
}

void frmMaster::renewRow(const ado::Recordset& films) {
    Err.Clear();
    std::optional<ListItem> row;
    skipFailure([&] { row = lvwList_->add(rowKey(films), films.Fields(u"KatCisl").Value().toText()); });
    if (!row) {
        skipFailure([&] { row = lvwList_->item(rowKey(films)); });
        if (!row) return;  // a film without a number is not listed
        skipFailure([&] { row->setText(films.Fields(u"KatCisl").Value().toText()); });
    }
    skipFailure([&] { row->setSubItem(1, films.Fields(u"CZJM").Value().toText()); });
    skipFailure([&] { row->setSubItem(2, films.Fields(u"Zanr").Value().toText()); });
    skipFailure([&] { row->setSubItem(3, QString()); });
    skipFailure([&] { row->setSubItem(4, QString()); });
    skipFailure([&] { row->setSubItem(5, films.Fields(u"PuvJm").Value().toText()); });
    skipFailure([&] { row->setSubItem(6, JazykText(films.Fields(u"Jazyk").Value().toLong())); });
    skipFailure([&] { BarvaPolozky(*lvwList_, row->key(), black); });
}

void frmMaster::Recolor() {
    for (int row = 0; row < lvwList_->count(); ++row) {
        if (!skipFailure([&] { BarvaPolozky(*lvwList_, lvwList_->itemAt(row).key(), black); })) break;
    }
}
