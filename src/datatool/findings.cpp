#include "datatool/findings.h"

#include "datatool/Interruption.h"
#include "film/mBlobDATA.h"

using namespace Qt::StringLiterals;

using findings::Kind;

namespace {

constexpr qsizetype titleLength = 50;

/// @param sql gives a film's key, its title and what is wrong.
Kind kind(const sqlite::Database& catalogue, const QString& title, const QByteArray& sql) {
    Kind found{title, {}};
    const sqlite::Statement rows(catalogue, sql);
    while (rows.step()) {
        interruption::check();
        found.lines += u"%1: %2"_s.arg(findings::filmName(rows.text(0), rows.text(1)), rows.text(2));
    }
    return found;
}

QByteArray films(const char* wrong, const QByteArray& condition) {
    return "SELECT DVDID, CZJm, '" + QByteArray(wrong) + "' FROM tDVD WHERE " + condition;
}

QByteArray links(const findings::PictureLink& link) {
    return "SELECT DVDID, CZJm, '" + QByteArray(link.name) + " má klíč ' || " + link.column +
           " || CASE WHEN PicID IS NULL THEN ', takový obrázek není' "
           "WHEN PicDVDID IS NOT DVDID THEN ', to je obrázek filmu ' || IFNULL(PicDVDID, 'bez čísla') "
           "WHEN PicSkup='N' THEN ', to je náhled' WHEN PicSkup='O' THEN ', to je obal' "
           "ELSE ', to je obrázek neznámého druhu' END "
           "FROM tDVD LEFT JOIN pictures.tPicture ON PicID=" +
           link.column + " WHERE " + findings::wrongLink(link);
}

/// Loans, as "půjčeno 2. 1. 2020…".
QByteArray loans(const char* wrong, const QByteArray& rest) {
    return "SELECT P_DVDID, CZJm, 'půjčeno ' || CASE WHEN PDatPujcky GLOB "
           "'[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*' THEN (substr(PDatPujcky, 9, 2) + 0) || '. ' || "
           "(substr(PDatPujcky, 6, 2) + 0) || '. ' || substr(PDatPujcky, 1, 4) "
           "ELSE IFNULL(PDatPujcky, 'neznámo kdy') END || '" +
           QByteArray(wrong) + " FROM tPujcky LEFT JOIN tDVD ON DVDID=P_DVDID " + rest;
}

Kind wrongLengths(const sqlite::Database& catalogue) {
    Kind found{u"Obrázky, jejichž délka nesouhlasí"_s, {}};
    const sqlite::Statement rows(
        catalogue,
        "SELECT PicDVDID, CZJm, PicID, PicSize, length(PicDat) FROM pictures.tPicture "
        "LEFT JOIN tDVD ON DVDID=PicDVDID");
    while (rows.step()) {
        interruption::check();
        const qint64 should = blob::storedLength(rows.number(3));
        if (!rows.isNull(3) && rows.number(4) == should) continue;
        const QString what = rows.isNull(3) || rows.isNull(4)
                                 ? u"nemá žádná data"_s
                                 : u"má mít délku %1 B a má %2"_s.arg(should).arg(rows.number(4));
        found.lines +=
            u"%1: obrázek %2 %3"_s.arg(findings::filmName(rows.text(0), rows.text(1)), rows.text(2), what);
    }
    return found;
}

}  // namespace

QString findings::filmName(const QString& key, const QString& title) {
    QString shown = title.simplified();
    if (shown.size() > titleLength) shown = shown.left(titleLength) + u"…"_s;
    const QString number = key.isEmpty() ? u"Film bez čísla"_s : u"Film "_s + key;
    return shown.isEmpty() ? number : u"%1 „%2“"_s.arg(number, shown);
}

QByteArray findings::emptyFilm() {
    QByteArrayList conditions;
    for (const char* text : {"KatCisl", "CZJm", "PuvJm", "Zanr", "Obsah", "Stat", "Rezie", "Delka", "Rok",
                             "Herci", "Poznamka", "Nabidka", "JazykDetail", "Titulky"})
        conditions += "IFNULL(" + QByteArray(text) + ",'')=''";
    for (const char* number : {"DiskPocet", "Jazyk", "Oddel_ID", "Obal_ID", "Nahled_ID"})
        conditions += "IFNULL(" + QByteArray(number) + ",0)=0";
    return '(' + conditions.join(" AND ") + ')';
}

const std::vector<findings::PictureLink>& findings::pictureLinks() {
    static const std::vector<PictureLink> links{{"Obal_ID", "'O'", "obal"}, {"Nahled_ID", "'N'", "náhled"}};
    return links;
}

QByteArray findings::wrongLink(const PictureLink& link) {
    return "IFNULL(" + link.column +
           ",0)<>0 AND NOT EXISTS (SELECT * FROM pictures.tPicture AS own WHERE own.PicID=" + link.column +
           " AND own.PicDVDID=DVDID AND own.PicSkup=" + link.group + ")";
}

std::vector<Kind> findings::of(const sqlite::Database& catalogue,
                               const std::function<void(qint64 done, qint64 all)>& step) {
    const QByteArray filled = " AND NOT " + emptyFilm();
    // Both the numbers and the codes of customers stand in loans.
    const QByteArray customers =
        "(SELECT USID FROM tUser UNION ALL "
        "SELECT CAST(trim(USREGNUM) AS INTEGER) FROM tUser WHERE USREGNUM GLOB '*[0-9]*')";
    const std::pair<QString, QByteArray> queries[] = {
        {u"Prázdné záznamy"_s, films("záznam neobsahuje nic", emptyFilm())},
        {u"Filmy, které žádný seznam neukáže"_s,
         films("nemá katalogové číslo, seznam ho neukáže", "KatCisl IS NULL" + filled)},
        {u"Filmy, u kterých se seznam zastaví"_s,
         films("nemá jazyk, seznam se u něj zastaví", "Jazyk IS NULL" + filled)},
        {u"Špatné odkazy na obal"_s, links(pictureLinks()[0])},
        {u"Špatné odkazy na náhled"_s, links(pictureLinks()[1])},
        {u"Otevřené výpůjčky smazaných filmů"_s,
         loans(", film už v katalogu není'", "WHERE PDatVraceni IS NULL AND DVDID IS NULL")},
        {u"Filmy půjčené vícekrát najednou"_s,
         "SELECT P_DVDID, CZJm, 'je půjčený ' || COUNT(*) || 'krát najednou' FROM tPujcky LEFT JOIN tDVD "
         "ON DVDID=P_DVDID WHERE PDatVraceni IS NULL GROUP BY P_DVDID HAVING COUNT(*)>1"},
        {u"Výpůjčky pod číslem, které nemá žádný zákazník"_s,
         loans(" ' || IFNULL('pod číslem ' || P_UID, 'bez čísla zákazníka') || ' (' || CASE WHEN "
               "PDatVraceni IS NULL THEN 'nevráceno' ELSE 'vráceno' END || ')'",
               "WHERE P_UID IS NULL OR P_UID NOT IN " + customers)}};
    const auto all = static_cast<qint64>(std::size(queries)) + 1;
    std::vector<Kind> kinds;
    for (const auto& [title, sql] : queries) {
        step(static_cast<qint64>(kinds.size()), all);
        kinds.push_back(kind(catalogue, title, sql));
    }
    step(all - 1, all);
    kinds.push_back(wrongLengths(catalogue));
    return kinds;
}
