#include "film/frmZanr.h"

using namespace Qt::StringLiterals;

frmZanr::frmZanr(QWidget* parent)
    : DictionaryRecord({.caption = u"Žánr"_s,
                        .nameColumn = u"ZNAME"_s,
                        .loadSql = u"SELECT * from tZanr where ZID="_s,
                        .saveSql = u"SELECT * from tZanr where ZID="_s},
                       parent) {
    setObjectName(u"frmZanr"_s);
}
