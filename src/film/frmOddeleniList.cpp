#include "film/frmOddeleniList.h"

#include "film/frmOddel.h"

using namespace Qt::StringLiterals;

frmOddeleniList::frmOddeleniList(QWidget* parent)
    : DictionaryList({.caption = u"Oddělení  - číselník"_s,
                      .sql = u"SELECT * from tOddeleni"_s,
                      .idColumn = u"OdID"_s,
                      .nameColumn = u"ODjm"_s},
                     parent) {
    setObjectName(u"frmOddeleniList"_s);
    Refresh_List();
}

std::unique_ptr<DictionaryRecord> frmOddeleniList::makeRecord() {
    return std::make_unique<frmOddel>(this);
}

void frmOddeleniList::editRecord() {
    // Without a selected row the record window stays loaded, hidden, for the next use.
    if (!editSelected()) return;
    unloadRecord();
    Refresh_List();
}
