#include "datatool/Sequences.h"

#include <algorithm>
#include <limits>

#include "datatool/DataFiles.h"

using namespace Qt::StringLiterals;

namespace {

struct Table {
    const char* schema;
    const char* name;
    std::vector<const char*> references;  // queries for the highest key up to ?1 that other rows name
};

const std::vector<Table>& tables() {
    // Loans and pictures of deleted films stay. Loans name customers by their own codes too.
    static const std::vector<Table> tables{
        {"main",
         "tDVD",
         {"SELECT P_DVDID FROM tPujcky WHERE P_DVDID BETWEEN 1 AND ?1 ORDER BY P_DVDID DESC LIMIT 1",
          "SELECT PicDVDID FROM pictures.tPicture WHERE PicDVDID BETWEEN 1 AND ?1 ORDER BY PicDVDID DESC "
          "LIMIT 1"}},
        {"main", "tZanr", {}},
        {"main", "tOddeleni", {}},
        {"main", "tUser", {}},
        {"main", "tPujcky", {}},
        {"pictures",
         "tPicture",
         {"SELECT max(IFNULL(max(CASE WHEN Obal_ID BETWEEN 1 AND ?1 THEN Obal_ID END), 0), "
          "IFNULL(max(CASE WHEN Nahled_ID BETWEEN 1 AND ?1 THEN Nahled_ID END), 0)) FROM tDVD"}}};
    return tables;
}

/// 0 when no row names any.
qint64 highestReference(const sqlite::Database& catalogue, const Table& table) {
    qint64 highest = 0;
    for (const char* sql : table.references) {
        const sqlite::Statement found(catalogue, sql);
        // A reference that is nonsense must not use up all keys.
        found.bind(1, qint64{dataFiles::highestKey});
        if (found.step()) highest = std::max(highest, found.number(0));
    }
    return highest;
}

}  // namespace

std::vector<sequences::Wrong> sequences::wrong(const sqlite::Database& catalogue, const QString& only) {
    std::vector<Wrong> found;
    const auto number = [&catalogue](const QByteArray& sql) { return catalogue.number(sql.constData()); };
    for (const Table& table : tables()) {
        const QByteArray schema = table.schema;
        const QByteArray name = table.name;
        const QString title = QString::fromUtf8(name);
        if (!only.isEmpty() && title != only) continue;
        const qint64 given = number("SELECT IFNULL(max(seq), 0) FROM " + schema +
                                    ".sqlite_sequence WHERE name='" + name + "'");
        const qint64 highest = number("SELECT IFNULL(max(rowid), 0) FROM " + schema + "." + name);
        const qint64 referred = highestReference(catalogue, table);
        if (std::max(given, highest) < referred) {
            found.push_back(
                {title, schema, referred,
                 u"Tabulka %1: nový záznam by dostal klíč, na který už odkazují jiné záznamy"_s.arg(title)});
        } else if (given < highest && highest <= dataFiles::highestKey) {
            // As a key with a damaged byte has.
            found.push_back(
                {title, schema, highest,
                 u"Tabulka %1: klíč záznamu %2 je vyšší než poslední vydaný, porovnejte ho se zálohou"_s.arg(
                     title, QString::number(highest))});
        } else if (given >= std::numeric_limits<qint32>::max() && highest < dataFiles::highestKey) {
            found.push_back({title, schema, std::max(highest, referred),
                             u"Tabulka %1: vydala všechny klíče, nový záznam nelze přidat"_s.arg(title)});
        }
    }
    return found;
}

void sequences::mend(const sqlite::Database& catalogue, const Wrong& wrong) {
    const QByteArray sequence = wrong.schema + ".sqlite_sequence";
    const sqlite::Statement clear(catalogue, "DELETE FROM " + sequence + " WHERE name=?");
    clear.bind(1, wrong.table);
    clear.step();
    const sqlite::Statement keep(catalogue, "INSERT INTO " + sequence + " (name, seq) VALUES (?, ?)");
    keep.bind(1, wrong.table);
    keep.bind(2, wrong.last);
    keep.step();
}
