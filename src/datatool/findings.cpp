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

QByteArray links(const findings::PictureLink& link, const char* name) {
    return "SELECT DVDID, CZJm, '" + QByteArray(name) + " má klíč ' || " + link.column +
           " || CASE WHEN PicID IS NULL THEN ', takový obrázek není' "
           "WHEN PicDVDID IS NOT DVDID THEN ', to je obrázek filmu ' || IFNULL(PicDVDID, 'bez čísla') "
           "ELSE ', to je obrázek druhého druhu' END "
           "FROM tDVD LEFT JOIN pictures.tPicture ON PicID=" +
           link.column + " WHERE " + findings::wrongLink(link);
}

/// Loans, as "půjčeno …".
QByteArray loans(const char* wrong, const char* rest) {
    return "SELECT P_DVDID, CZJm, 'půjčeno ' || IFNULL(PDatPujcky, 'neznámo kdy') || '" + QByteArray(wrong) +
           " FROM tPujcky LEFT JOIN tDVD ON DVDID=P_DVDID " + rest;
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
                                 : u"má mít %1 bajtů a má jich %2"_s.arg(should).arg(rows.number(4));
        found.lines +=
            u"%1: obrázek %2 %3"_s.arg(findings::filmName(rows.text(0), rows.text(1)), rows.text(2), what);
    }
    return found;
}

}  // namespace

QString findings::filmName(const QString& key, const QString& title) {
    QString shown = title.simplified();
    if (shown.size() > titleLength) shown = shown.left(titleLength) + u"…"_s;
    return shown.isEmpty() ? u"Film "_s + key : u"Film %1 „%2“"_s.arg(key, shown);
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
    static const std::vector<PictureLink> links{{"Obal_ID", "'O'"}, {"Nahled_ID", "'N'"}};
    return links;
}

QByteArray findings::wrongLink(const PictureLink& link) {
    return "IFNULL(" + link.column +
           ",0)<>0 AND NOT EXISTS (SELECT * FROM pictures.tPicture AS own WHERE own.PicID=" + link.column +
           " AND own.PicDVDID=DVDID AND own.PicSkup=" + link.group + ")";
}

std::vector<Kind> findings::of(const sqlite::Database& catalogue) {
    const QByteArray filled = " AND NOT " + emptyFilm();
    // Both the numbers and the codes of customers stand in loans.
    const QByteArray customers =
        "(SELECT USID FROM tUser UNION ALL "
        "SELECT CAST(trim(USREGNUM) AS INTEGER) FROM tUser WHERE USREGNUM GLOB '*[0-9]*')";
    return {
        kind(catalogue, u"Prázdné záznamy"_s, films("záznam neobsahuje nic", emptyFilm())),
        kind(catalogue, u"Filmy, které žádný seznam neukáže"_s,
             films("nemá evidenční číslo, seznam ho neukáže", "KatCisl IS NULL" + filled)),
        kind(catalogue, u"Filmy, u kterých se seznam zastaví"_s,
             films("nemá jazyk, seznam se u něj zastaví", "Jazyk IS NULL" + filled)),
        kind(catalogue, u"Špatné odkazy na obal"_s, links(pictureLinks()[0], "obal")),
        kind(catalogue, u"Špatné odkazy na náhled"_s, links(pictureLinks()[1], "náhled")),
        wrongLengths(catalogue),
        kind(catalogue, u"Otevřené výpůjčky smazaných filmů"_s,
             loans(", film už v katalogu není'", "WHERE PDatVraceni IS NULL AND DVDID IS NULL")),
        kind(catalogue, u"Filmy půjčené vícekrát najednou"_s,
             "SELECT P_DVDID, CZJm, 'je půjčený ' || COUNT(*) || 'krát najednou' FROM tPujcky LEFT JOIN tDVD "
             "ON DVDID=P_DVDID WHERE PDatVraceni IS NULL GROUP BY P_DVDID HAVING COUNT(*)>1"),
        kind(catalogue, u"Výpůjčky pod číslem, které nemá žádný zákazník"_s,
             loans(" pod číslem ' || IFNULL(P_UID, 'Null') || ' (' || CASE WHEN PDatVraceni IS NULL THEN "
                   "'nevráceno' ELSE 'vráceno' END || ')'",
                   ("WHERE P_UID IS NULL OR P_UID NOT IN " + customers).constData())),
    };
}
