#include "film/frmZanry.h"

#include "film/frmZanr.h"

using namespace Qt::StringLiterals;

frmZanry::frmZanry(QWidget* parent)
    : DictionaryList({.caption = u"Žánry - číselník"_s,
                      .sql = u"SELECT * from tZanr "_s,
                      .idColumn = u"ZID"_s,
                      .nameColumn = u"ZNAME"_s,
                      .newTip = u"Přidá nový záznam"_s,
                      .editTip = u"Upraví aktuální záznam"_s},
                     parent) {
    setObjectName(u"frmZanry"_s);
    Refresh_List();
}

std::unique_ptr<DictionaryRecord> frmZanry::makeRecord() {
    return std::make_unique<frmZanr>(this);
}

void frmZanry::editRecord() {
    if (editSelected()) Refresh_List();
    unloadRecord();
}

void frmZanry::paint(const ListItem& row, const ado::Recordset& records) {
    row.setForeColor(static_cast<quint32>(records.Fields(u"ZCOLOR").Value().toLong()));
}

bool frmZanry::canEdit(qint32 recordCount) const {
    return recordCount > 0;
}
