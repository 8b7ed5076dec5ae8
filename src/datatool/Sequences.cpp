#include "datatool/Sequences.h"

#include <algorithm>
#include <limits>

#include "datatool/DataFiles.h"

using namespace Qt::StringLiterals;

namespace {

struct Table {
    const char* schema;
    const char* name;
    const char* references;  // a query for the keys that other rows name, also those of deleted rows
};
constexpr Table tables[] = {
    {"main", "tDVD", "SELECT P_DVDID AS k FROM tPujcky UNION ALL SELECT PicDVDID FROM pictures.tPicture"},
    {"main", "tZanr", "SELECT 0 AS k"},
    {"main", "tOddeleni", "SELECT 0 AS k"},
    {"main", "tUser", "SELECT 0 AS k"},  // loans name customers by their own codes too
    {"main", "tPujcky", "SELECT 0 AS k"},
    {"pictures", "tPicture", "SELECT Obal_ID AS k FROM tDVD UNION ALL SELECT Nahled_ID FROM tDVD"}};

}  // namespace

std::vector<sequences::Wrong> sequences::wrong(const sqlite::Database& catalogue) {
    std::vector<Wrong> found;
    for (const Table& table : tables) {
        const QByteArray schema = table.schema;
        const QByteArray name = table.name;
        const auto number = [&catalogue](const QByteArray& sql) { return catalogue.number(sql.constData()); };
        const qint64 given = number("SELECT IFNULL(max(seq), 0) FROM " + schema +
                                    ".sqlite_sequence WHERE name='" + name + "'");
        const qint64 highest = number("SELECT IFNULL(max(rowid), 0) FROM " + schema + "." + name);
        // A reference that is nonsense must not use up all keys.
        const qint64 referred =
            number(QByteArray("SELECT IFNULL(max(k), 0) FROM (") + table.references +
                   ") WHERE typeof(k)='integer' AND k<=" + QByteArray::number(dataFiles::highestKey));
        const QString title = QString::fromUtf8(name);
        if (std::max(given, highest) < referred) {
            found.push_back(
                {title, schema, referred,
                 u"Tabulka %1: nový záznam by dostal klíč, na který už odkazují jiné záznamy"_s.arg(title)});
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
