#include "film/frmOddel.h"

using namespace Qt::StringLiterals;

frmOddel::frmOddel(QWidget* parent)
    : DictionaryRecord({.caption = u"Oddělení"_s,
                        .nameColumn = u"odjm"_s,
                        .loadSql = u"SELECT * from tOddeleni where odID="_s,
                        .saveSql = u"SELECT * from tOddeleni where ODID="_s},
                       parent) {
    setObjectName(u"frmOddel"_s);
}
