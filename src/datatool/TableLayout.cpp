#include "datatool/TableLayout.h"

#include <QHash>
#include <algorithm>

#include "datatool/BadLine.h"
#include "datatool/CsvText.h"
#include "datatool/TableColumns.h"
#include "datatool/tableHeadings.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

FilmColumn::Role roleOf(const QString& column) {
    using Role = FilmColumn::Role;
    static const QHash<QString, Role> roles{{u"DVDID"_s, Role::key},           {u"CZJm"_s, Role::title},
                                            {u"DiskPocet"_s, Role::discs},     {u"Jazyk"_s, Role::language},
                                            {u"Oddel_ID"_s, Role::department}, {u"Obal_ID"_s, Role::cover},
                                            {u"Nahled_ID"_s, Role::preview}};
    return roles.value(column, Role::other);
}

}  // namespace

bool TableRecord::isBlank(int field, bool isNumber) const {
    if (field < 0) return true;
    if (!isNumber && reader.isQuoted(field)) return false;
    const QString& content = fields[field];
    return std::all_of(content.begin(), content.end(), [](QChar letter) { return letter == u' '; });
}

bool TableRecord::isNull(int field) const {
    return field >= 0 && csvField::isNull(fields[field]);
}

TableLayout::TableLayout(const sqlite::Database& database, const QStringList& header, qint64 line,
                         bool ignoreUnknown) {
    for (const TableColumn& column : columnsOf(database, u"tDVD"_s))
        columns.push_back({column.name, roleOf(column.name), column.kind == ado::ColumnKind::number});
    for (int field = 0; field < header.size(); ++field)
        place(header, field, line);
    if (ignoreUnknown || unknown.isEmpty()) return;
    for (qsizetype field = 0; field < header.size(); ++field) {
        if (text::trim(header[field]).isEmpty())
            throw BadLine(line,
                          u"sloupec %1 nemá nadpis. S volbou --ignore-unknown se vynechá."_s.arg(field + 1));
    }
    throw BadLine(line, u"neznámé sloupce: \"%1\". S volbou --ignore-unknown se vynechají."_s.arg(
                            unknown.join(u"\", \""_s)));
}

void TableLayout::place(const QStringList& header, int field, qint64 line) {
    const QString heading = text::trim(header[field]);
    const auto find = [this](QStringView name) {
        return std::find_if(columns.begin(), columns.end(), [name](const FilmColumn& column) {
            return column.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    };
    QString target = heading;
    auto column = find(target);
    const bool isOwn = column != columns.end();
    if (!isOwn) {
        target = tableHeadings::targetOf(heading);
        column = find(target);
    }
    int* place = column != columns.end()               ? &column->field
                 : target == tableHeadings::department ? &department
                 : target == tableHeadings::cover      ? &cover
                 : target == tableHeadings::preview    ? &preview
                                                       : nullptr;
    if (place == nullptr) {
        unknown += heading.isEmpty() ? u"%1. (bez nadpisu)"_s.arg(field + 1) : heading;
        return;
    }
    if (*place >= 0) {
        throw BadLine(line, u"sloupce \"%1\" a \"%2\" znamenají totéž (%3)."_s.arg(
                                text::trim(header[*place]), heading, isOwn ? column->name : target));
    }
    *place = field;
    if (column != columns.end()) column->isOwn = isOwn;
}

const FilmColumn& TableLayout::column(QStringView name) const {
    return *std::find_if(columns.begin(), columns.end(),
                         [name](const FilmColumn& column) { return column.name == name; });
}

bool TableLayout::hasPictures() const {
    return cover >= 0 || preview >= 0 || column(u"Obal_ID").field >= 0 || column(u"Nahled_ID").field >= 0;
}
