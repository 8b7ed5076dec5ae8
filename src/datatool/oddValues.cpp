#include "datatool/oddValues.h"

#include <QSet>
#include <cstring>
#include <limits>

#include "datatool/Interruption.h"
#include "datatool/shownText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr const char* numberColumns[] = {"DiskPocet", "Oddel_ID", "Obal_ID", "Nahled_ID"};

bool isNumber(sqlite3_value* value) {
    const int type = sqlite3_value_type(value);
    const qint64 number = sqlite3_value_int64(value);
    return type == SQLITE_NULL || (type == SQLITE_INTEGER && number >= std::numeric_limits<qint32>::min() &&
                                   number <= std::numeric_limits<qint32>::max());
}

bool isText(sqlite3_value* value) {
    const int type = sqlite3_value_type(value);
    if (type == SQLITE_NULL) return true;
    if (type == SQLITE_BLOB) return false;
    // As bytes: the engine would copy each text to end it with a NUL of its own.
    const void* bytes = sqlite3_value_blob(value);
    return bytes == nullptr ||
           std::memchr(bytes, 0, static_cast<size_t>(sqlite3_value_bytes(value))) == nullptr;
}

/// What is wrong with a film, "" if nothing is.
QString faultOf(const sqlite::Statement& films, const QSet<qint64>& departments) {
    if (films.number(0) < 1) return u"číslo záznamu není kladné"_s;
    const auto valueOf = [&films](int at) { return sqlite3_column_value(films.handle(), at); };
    int column = 1;
    for (const char* name : numberColumns) {
        if (!isNumber(valueOf(column))) {
            return u"%1 je „%2“, to není celé číslo, které program umí"_s.arg(
                QString::fromLatin1(name), shownText(films.text(column)).left(20));
        }
        ++column;
    }
    constexpr int department = 2;
    const qint64 key = films.number(department);
    if (key != 0 && !departments.contains(key)) return u"oddělení %1 v číselníku není"_s.arg(key);
    for (const char* name : oddValues::textColumns) {
        if (!isText(valueOf(column++)))
            return u"%1 obsahuje znaky, které nejsou text"_s.arg(QString::fromLatin1(name));
    }
    return {};
}

}  // namespace

findings::Kind oddValues::of(const sqlite::Database& catalogue) {
    QSet<qint64> departments;
    const sqlite::Statement known(catalogue, "SELECT ODID FROM tOddeleni");
    while (known.step())
        departments += known.number(0);
    QByteArray columns = "DVDID";
    for (const char* name : numberColumns)
        columns += QByteArray(",") + name;
    const int title = static_cast<int>(std::size(numberColumns)) + 2;
    for (const char* name : textColumns)
        columns += QByteArray(",") + name;
    findings::Kind found{u"Filmy s údaji, které program neumí přečíst"_s, {}};
    const sqlite::Statement films(catalogue, "SELECT " + columns + " FROM tDVD");
    while (films.step()) {
        interruption::check();
        const QString fault = faultOf(films, departments);
        if (!fault.isEmpty())
            found.lines += u"%1: %2"_s.arg(findings::filmName(films.text(0), films.text(title)), fault);
    }
    return found;
}
