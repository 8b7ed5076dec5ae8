#include "datatool/RowWriter.h"

#include <QDateTime>
#include <algorithm>

#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int shownColumns = 3;
constexpr qsizetype shownLength = 40;

/// True for `YYYY-MM-DD HH:MM:SS`, by the calendar alone: an hour that summer time skips was a real one to
/// the program that wrote it.
bool isDate(QByteArrayView value) {
    constexpr QByteArrayView form = "0000-00-00 00:00:00";
    if (value.size() != form.size()) return false;
    for (qsizetype at = 0; at < form.size(); ++at) {
        const bool isDigit = value[at] >= '0' && value[at] <= '9';
        if (form[at] == '0' ? !isDigit : value[at] != form[at]) return false;
    }
    const auto number = [value](qsizetype at, qsizetype length) { return value.sliced(at, length).toInt(); };
    return QDate::isValid(number(0, 4), number(5, 2), number(8, 2)) &&
           QTime::isValid(number(11, 2), number(14, 2), number(17, 2));
}

QString shown(QByteArrayView value) {
    QString text = QString::fromUtf8(value).simplified();
    if (text.size() > shownLength) text = text.left(shownLength) + u"…"_s;
    return text;
}

}  // namespace

RowWriter::RowWriter(const sqlite::Database& database, const QString& table, const OldTable& rows) {
    const sqlite::Statement info(database, "SELECT name, type, pk FROM pragma_table_info(?)");
    info.bind(1, table);
    while (info.step()) {
        const QString name = info.text(0);
        const QString type = info.text(1);
        const bool isKey = info.number(2) != 0;
        const auto field = static_cast<int>(placeOf(name, rows.columns()));
        if (field < 0) {
            // Loans have a key of their own only in the new file.
            if (isKey && table == u"tPujcky"_s) continue;
            throw RuntimeError(errors::itemNotFound,
                               u"V tabulce %1 starého souboru chybí sloupec %2."_s.arg(table, name));
        }
        const Kind kind = type == u"INTEGER"_s    ? Kind::number
                          : type == u"DATETIME"_s ? Kind::date
                          : type == u"BLOB"_s     ? Kind::bytes
                                                  : Kind::text;
        columns_.push_back({name, kind, isKey, field});
    }
    insert_.emplace(database, insertSql(table));
}

QByteArray RowWriter::insertSql(const QString& table) const {
    QByteArray names;
    QByteArray marks;
    for (const Column& column : columns_) {
        names += (names.isEmpty() ? "" : ",") + column.name.toUtf8();
        marks += marks.isEmpty() ? "?" : ",?";
    }
    return "INSERT INTO " + table.toUtf8() + " (" + names + ") VALUES (" + marks + ')';
}

std::optional<QString> RowWriter::bind(int parameter, const Column& column, QByteArrayView value) const {
    switch (column.kind) {
        case Kind::number: {
            bool isNumber = false;
            const int number = value.toInt(&isNumber);
            if (!isNumber)
                return u"sloupec %1 má být celé číslo a je \"%2\""_s.arg(column.name, shown(value));
            insert_->bind(parameter, qint64{number});
            break;
        }
        case Kind::date:
            if (!isDate(value)) {
                return u"sloupec %1 má být datum od 30. 12. 1899 a starý soubor dává \"%2\""_s.arg(
                    column.name, shown(value));
            }
            insert_->bindTextInPlace(parameter, value);
            break;
        case Kind::text:
            if (!value.isValidUtf8()) return u"text ve sloupci %1 nelze přečíst"_s.arg(column.name);
            insert_->bindTextInPlace(parameter, value);
            break;
        case Kind::bytes:
            insert_->bindBytesInPlace(parameter, value);
            break;
    }
    return std::nullopt;
}

std::optional<QString> RowWriter::write(const OldTable& rows) {
    int parameter = 0;
    for (const Column& column : columns_) {
        ++parameter;
        if (rows.isDamaged(column.field))
            return u"ve starém souboru chybí část hodnoty ve sloupci %1"_s.arg(column.name);
        const auto value = rows.value(column.field);
        if (!value) {
            if (column.isKey) return u"nemá klíč %1"_s.arg(column.name);
            insert_->bindNull(parameter);
        } else if (auto reason = bind(parameter, column, *value)) {
            return reason;
        }
    }
    try {
        insert_->step();
    } catch (const sqlite::Failure& failure) {
        if ((failure.resultCode() & 0xFF) != SQLITE_CONSTRAINT) throw;
        throw RuntimeError(errors::databaseConstraint,
                           u"Starý soubor je poškozený: týž klíč má víc řádků (%1)."_s.arg(nameOf(rows, 0)));
    }
    insert_->reset();
    return std::nullopt;
}

QString RowWriter::nameOf(const OldTable& rows, qint64 number) const {
    QStringList values;
    for (const Column& column : columns_) {
        const auto value = rows.value(column.field);
        if (!value || column.kind == Kind::bytes) continue;
        values += u"%1 %2"_s.arg(column.name, shown(*value));
        if (column.isKey) return values.back();
        if (values.size() == shownColumns) break;
    }
    return u"řádek %1 (%2)"_s.arg(number).arg(values.join(u", "_s));
}

std::optional<QByteArrayView> RowWriter::value(const OldTable& rows, QStringView column) const {
    const auto found = std::find_if(columns_.begin(), columns_.end(),
                                    [column](const Column& candidate) { return candidate.name == column; });
    if (found == columns_.end()) return std::nullopt;
    return rows.value(found->field);
}

QString RowWriter::key() const {
    const auto found =
        std::find_if(columns_.begin(), columns_.end(), [](const Column& column) { return column.isKey; });
    return found == columns_.end() ? QString() : found->name;
}

QStringList RowWriter::leftOut(const OldTable& rows) const {
    QStringList names;
    for (int field = 0; field < rows.columns().size(); ++field) {
        const bool isKnown = std::any_of(columns_.begin(), columns_.end(),
                                         [field](const Column& column) { return column.field == field; });
        if (!isKnown) names += rows.columns()[field];
    }
    return names;
}
