#include "datatool/findings.h"

#include "datatool/Interruption.h"
#include "datatool/Sequences.h"
#include "datatool/oddValues.h"
#include "datatool/shownText.h"
#include "film/mBlobDATA.h"
#include "platform/text.h"

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
        found.lines +=
            u"%1: %2"_s.arg(findings::filmName(rows.text(0), rows.text(1)), shownText(rows.text(2)));
    }
    return found;
}

QByteArray films(const char* wrong, const QByteArray& condition) {
    return "SELECT DVDID, CZJm, '" + QByteArray(wrong) + "' FROM tDVD WHERE " + condition;
}

/// The first of several things that can be wrong with a film.
QByteArray filmsBy(const std::vector<std::pair<QByteArray, QByteArray>>& conditions) {
    QByteArray sql = "SELECT * FROM (SELECT DVDID, CZJm, CASE";
    for (const auto& [condition, wrong] : conditions)
        sql += " WHEN " + condition + " THEN " + wrong;
    return sql + " END AS wrong FROM tDVD) WHERE wrong IS NOT NULL";
}

/// A literal for the user, with a value that may be long.
QByteArray telling(const char* before, const char* column, const char* after) {
    return QByteArray("'") + before + " „' || substr(" + column + ", 1, 20) || '“" + after + "'";
}

/// Films whose row breaks off the filling of the list.
QByteArray stoppingFilms() {
    return filmsBy(
        {{"DVDID NOT BETWEEN -2147483648 AND 2147483647",
          "'tak velké číslo záznamu program neumí, seznam se u něj zastaví'"},
         {findings::unreadableLanguage() + " AND Jazyk IS NOT NULL",
          telling("jazyk", "Jazyk", " není číslo, které program umí, seznam se u něj zastaví")},
         {"Jazyk IS NULL AND NOT " + findings::emptyFilm(), "'nemá jazyk, seznam se u něj zastaví'"}});
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

Kind wrongPictures(const sqlite::Database& catalogue) {
    Kind found{u"Obrázky, které nejsou celé nebo nemají typ"_s, {}};
    const sqlite::Statement rows(
        catalogue,
        "SELECT PicDVDID, CZJm, PicID, PicSize, length(PicDat), substr(PicTyp, 1, 20) FROM pictures.tPicture "
        "LEFT JOIN tDVD ON DVDID=PicDVDID");
    while (rows.step()) {
        interruption::check();
        const qint64 should = blob::storedLength(rows.number(3));
        QString what;
        if (rows.isNull(3) || rows.isNull(4)) {
            what = u"nemá žádná data"_s;
        } else if (rows.number(4) != should) {
            what = u"má mít délku %1 B a má %2"_s.arg(should).arg(rows.number(4));
        } else if (rows.text(5).size() != 3) {
            what = u"má typ „%1“, typ má tři písmena"_s.arg(shownText(rows.text(5)));
        } else {
            continue;
        }
        found.lines +=
            u"%1: obrázek %2 %3"_s.arg(findings::filmName(rows.text(0), rows.text(1)), rows.text(2), what);
    }
    return found;
}

Kind sameCodes(const sqlite::Database& catalogue) {
    Kind found{u"Zákazníci se stejným osobním kódem"_s, {}};
    const sqlite::Statement rows(
        catalogue,
        "SELECT group_concat(USID, ', '), trim(USREGNUM) AS code FROM tUser WHERE IFNULL(code, '')<>'' "
        "GROUP BY code HAVING COUNT(*)>1");
    while (rows.step())
        found.lines +=
            u"Zákazníci %1: mají stejný osobní kód %2"_s.arg(rows.text(0), shownText(rows.text(1)));
    return found;
}

Kind wrongSequences(const sqlite::Database& catalogue) {
    Kind found{u"Čísla nových záznamů"_s, {}};
    for (const sequences::Wrong& wrong : sequences::wrong(catalogue))
        found.lines += wrong.fault;
    return found;
}

}  // namespace

QString findings::filmName(const QString& key, const QString& title) {
    const QString whole = shownText(title).simplified();
    QString shown = text::cut(whole, titleLength);
    if (shown.size() < whole.size()) shown += u"…"_s;
    const QString number = key.isEmpty() ? u"Film bez čísla"_s : u"Film "_s + key;
    return shown.isEmpty() ? number : u"%1 „%2“"_s.arg(number, shown);
}

QByteArray findings::emptyFilm() {
    QByteArrayList conditions;
    for (const char* text : oddValues::textColumns)
        conditions += "IFNULL(" + QByteArray(text) + ",'')=''";
    for (const char* number : {"DiskPocet", "Jazyk", "Oddel_ID", "Obal_ID", "Nahled_ID"})
        conditions += "IFNULL(" + QByteArray(number) + ",0)=0";
    return '(' + conditions.join(" AND ") + ')';
}

QByteArray findings::unreadableLanguage() {
    return "(typeof(Jazyk) IN ('text', 'blob') OR Jazyk NOT BETWEEN -2147483648 AND 2147483647)";
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
        {u"Filmy, u kterých se seznam zastaví"_s, stoppingFilms()},
        {u"Špatné odkazy na obal"_s, links(pictureLinks()[0])},
        {u"Špatné odkazy na náhled"_s, links(pictureLinks()[1])},
        {u"Otevřené výpůjčky smazaných filmů"_s,
         loans(", film už v katalogu není'", "WHERE PDatVraceni IS NULL AND DVDID IS NULL")},
        {u"Výpůjčky, za kterými seznam další půjčené filmy neoznačí"_s,
         loans(
             "' || CASE WHEN PDatPujcky IS NULL THEN '' ELSE ', zákazník nemá jméno' END || ', seznam za ní "
             "další půjčené filmy neoznačí'",
             "JOIN tUser ON USID=P_UID WHERE PDatVraceni IS NULL AND DVDID IS NOT NULL AND "
             "(PDatPujcky IS NULL OR USNAME IS NULL)")},
        {u"Filmy půjčené vícekrát najednou"_s,
         "SELECT P_DVDID, CZJm, 'je půjčený ' || COUNT(*) || 'krát najednou' FROM tPujcky LEFT JOIN tDVD "
         "ON DVDID=P_DVDID WHERE PDatVraceni IS NULL GROUP BY P_DVDID HAVING COUNT(*)>1"},
        {u"Výpůjčky pod číslem, které nemá žádný zákazník"_s,
         loans(" ' || IFNULL('pod číslem ' || P_UID, 'bez čísla zákazníka') || ' (' || CASE WHEN "
               "PDatVraceni IS NULL THEN 'nevráceno' ELSE 'vráceno' END || ')'",
               "WHERE P_UID IS NULL OR P_UID NOT IN " + customers)}};
    const auto all = static_cast<qint64>(std::size(queries)) + 4;
    std::vector<Kind> kinds;
    for (const auto& [title, sql] : queries) {
        step(static_cast<qint64>(kinds.size()), all);
        kinds.push_back(kind(catalogue, title, sql));
    }
    for (const auto& rest : {&oddValues::of, &sameCodes, &wrongSequences, &wrongPictures}) {
        step(static_cast<qint64>(kinds.size()), all);
        kinds.push_back(rest(catalogue));
    }
    return kinds;
}
