#include "datatool/RowWriter.h"

#include <algorithm>

#include "datatool/shownText.h"
#include "platform/dates.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;
using ado::ColumnKind;

namespace {

constexpr int shownColumns = 3;
constexpr qsizetype shownLength = 40;

QString shown(QByteArrayView value) {
    QString text = QString::fromUtf8(value).simplified();
    if (text.size() > shownLength) text = text.left(shownLength) + u"…"_s;
    return shownText(text);
}

}  // namespace

RowWriter::RowWriter(const sqlite::Database& database, const QString& table, const OldTable& rows) {
    QByteArrayList names;
    for (const TableColumn& column : columnsOf(database, table)) {
        const qsizetype field = placeOf(column.name, rows.columns());
        if (field < 0) {
            // Loans have a key of their own only in the new file.
            if (column.isKey && table == u"tPujcky"_s) continue;
            throw RuntimeError(errors::itemNotFound,
                               u"V tabulce %1 starého souboru chybí sloupec %2."_s.arg(table, column.name));
        }
        columns_.push_back({column, field});
        names += column.name.toUtf8();
    }
    insert_.emplace(database, ado::insertSql(table.toUtf8(), names));
}

std::optional<QString> RowWriter::bind(int parameter, const Column& column, QByteArrayView value) const {
    switch (column.kind) {
        case ColumnKind::number: {
            bool isNumber = false;
            const int number = value.toInt(&isNumber);
            if (!isNumber) return u"sloupec %1 má být celé číslo a je „%2“"_s.arg(column.name, shown(value));
            insert_->bind(parameter, qint64{number});
            break;
        }
        case ColumnKind::date:
            if (!dates::fromStored(QString::fromLatin1(value)).isValid()) {
                return u"sloupec %1 má být datum od 30. 12. 1899 a starý soubor dává „%2“"_s.arg(
                    column.name, shown(value));
            }
            insert_->bindTextInPlace(parameter, value);
            break;
        case ColumnKind::text:
            if (!value.isValidUtf8()) return u"text ve sloupci %1 nelze přečíst"_s.arg(column.name);
            insert_->bindTextInPlace(parameter, value);
            break;
        case ColumnKind::bytes:
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
    } catch (const RuntimeError& failure) {
        if (failure.number() != errors::databaseConstraint) throw;
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
        if (!value || column.kind == ColumnKind::bytes) continue;
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
    for (qsizetype field = 0; field < rows.columns().size(); ++field) {
        const bool isKnown = std::any_of(columns_.begin(), columns_.end(),
                                         [field](const Column& column) { return column.field == field; });
        if (!isKnown) names += rows.columns()[field];
    }
    return names;
}
