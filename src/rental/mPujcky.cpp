#include "rental/mPujcky.h"

#include <algorithm>

#include "core/forEachRow.h"
#include "platform/Outside.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

/// One entry for each row of a query, from two of its columns.
std::vector<ListEntry> entriesOf(const QString& sql, QStringView textColumn, QStringView itemDataColumn) {
    std::vector<ListEntry> entries;
    std::optional<ado::Field> text;
    std::optional<ado::Field> itemData;
    forEachRow(sql, [&](const ado::Recordset& rows) {
        if (!text) text = rows.Fields(textColumn);
        if (!itemData) itemData = rows.Fields(itemDataColumn);
        entries.push_back({text->Value().toText(), itemData->Value().toLong()});
    });
    return entries;
}

std::vector<ListEntry> films(const QString& sql) {
    return entriesOf(sql, u"CZJM", u"DVDID");
}

/// Whether a text is a whole number and may be put into a query as it is.
bool isCustomerNumber(const QString& code) {
    const QString number = text::trim(code);
    const bool sign = number.startsWith(u'-') || number.startsWith(u'+');
    const bool digits = std::all_of(number.begin() + (sign ? 1 : 0), number.end(),
                                    [](QChar letter) { return letter >= u'0' && letter <= u'9'; });
    return digits && number.size() > (sign ? 1 : 0);
}

}  // namespace

void PujcDVD(qint32 UID, qint32 DVDID) {
    const QDateTime now = Outside::current().now();
    Err.Clear();
    const CatalogueQuery loans(u"SELECT * from tPujcky"_s, CatalogueQuery::Failures::thrown);
    loans->AddNew();
    loans->Fields(u"P_UID").setValue(UID);
    loans->Fields(u"P_DVDID").setValue(DVDID);
    loans->Fields(u"PDATPUJCKY").setValue(now);
    loans->Update();
}

void VratDVD(qint32 /*UID*/, qint32 DVDID) {
    const QDateTime now = Outside::current().now();
    Err.Clear();
    const CatalogueQuery loans(
        u"SELECT * from tPujcky WHERE p_DVDID="_s + QString::number(DVDID) + u" and PDatVraceni is null"_s,
        CatalogueQuery::Failures::thrown);
    if (loans->Eof()) return;
    loans->Fields(u"PDATVRACENI").setValue(now);
    loans->Update();
}

std::vector<ListEntry> freeFilms() {
    return films(
        u"SELECT tDVD.DVDID, tDVD.CZJm FROM tDVD  where  NOT EXISTS ( SELECT  *  FROM tPujcky  WHERE  "
        "p_dvdid =DVDID ) or  NOT EXISTS ( SELECT  *  FROM tPujcky  WHERE  p_dvdid =DVDID and pdatvraceni "
        "is null) ORDER BY CZJM;"_s);
}

std::optional<std::vector<ListEntry>> filmsToReturn(const QString& code) {
    if (!isCustomerNumber(code)) return std::nullopt;
    return films(
        u"SELECT tDVD.DVDID, tDVD.CZJm FROM tDVD  where  EXISTS ( SELECT  *  FROM tPujcky  WHERE  p_dvdid "
        "=DVDID and pdatvraceni is null and P_UID="_s +
        code + u") ORDER BY CZJM;"_s);
}

QString history(qint32 USID) {
    QString lines;
    std::optional<ado::Field> title;
    std::optional<ado::Field> returned;
    forEachRow(
        u"SELECT tDVD.CZJm, tPujcky.PDatPujcky, tPujcky.PDatVraceni, tUser.USID FROM tUser INNER JOIN (tDVD "
        "INNER JOIN tPujcky ON tDVD.DVDID = tPujcky.P_DVDID) ON tUser.USID = tPujcky.P_UID Where "
        "(((tPujcky.PDatVraceni) Is Not Null) And ((tUser.USID) = "_s +
            QString::number(USID) + u")) ORDER BY tPujcky.PDatVraceni DESC;"_s,
        [&](const ado::Recordset& loans) {
            if (!title) title = loans.Fields(u"CZJm");
            if (!returned) returned = loans.Fields(u"PDatVraceni");
            const QString line = title->Value().toText() + u" vráceno : "_s + returned->Value().toText();
            lines += line + u"\r\n"_s;
        });
    return lines;
}

std::vector<ListEntry> customersByName() {
    return entriesOf(u"SELECT * from tUser ORDER BY USNAME"_s, u"USNAME", u"USID");
}

QString openLoansSql(const QString& condition) {
    return u"SELECT tDVD.DVDID, tPujcky.P_UID, tPujcky.P_DVDID, tPujcky.PDatPujcky,tPujcky.PDatVraceni, "
           "tUser.USID, tUser.USNAME FROM tUser INNER JOIN (tDVD INNER JOIN tPujcky ON tDVD.DVDID = "
           "tPujcky.P_DVDID) ON tUser.USID = tPujcky.P_UID WHERE (((tPujcky.PDatVraceni) Is Null))"_s +
           condition + u';';
}
