#include "datatool/TableLayout.h"

#include <QHash>
#include <algorithm>

#include "datatool/BadLine.h"
#include "datatool/CsvText.h"
#include "datatool/TableColumns.h"
#include "datatool/shownText.h"
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

bool TableRecord::isEmpty(int field) const {
    return field < 0 || QStringView(fields[field]).trimmed().isEmpty();
}

TableLayout::TableLayout(const sqlite::Database& database, const QStringList& header, qint64 line,
                         bool ignoreUnknown) {
    for (const TableColumn& column : columnsOf(database, u"tDVD"_s))
        columns.push_back({column.name, roleOf(column.name), column.kind == ado::ColumnKind::number});
    const int foreign = foreignTitleField(header);
    if (foreign >= 0) foreignTitle = text::trim(header[foreign]);
    for (int field = 0; field < header.size(); ++field)
        place(header, field, field == foreign ? u"PuvJm"_s : targetOf(text::trim(header[field])), line);
    // Otherwise the option would make films of rows in which the program can read nothing.
    if (column(u"CZJm").field < 0 && column(u"PuvJm").field < 0 && column(u"KatCisl").field < 0) {
        throw BadLine(line,
                      u"žádný sloupec tu není nadepsaný jako název filmu nebo katalogové číslo. První řádek "
                      "tabulky má obsahovat nadpisy sloupců, třeba „Název“ a „Rok“; všechny známé vypíše "
                      "kalvera-data load --help. Má-li je a program je jen špatně přečetl, uložte ji "
                      "v kódování UTF-8."_s);
    }
    if (!ignoreUnknown) refuseUnknown(header, line);
}

void TableLayout::refuseUnknown(const QStringList& header, qint64 line) const {
    if (unknown.isEmpty()) return;
    for (qsizetype field = 0; field < header.size(); ++field) {
        if (text::trim(header[field]).isEmpty())
            throw BadLine(line,
                          u"sloupec %1 nemá nadpis. S volbou --ignore-unknown se vynechá."_s.arg(field + 1));
    }
    QStringList shown;
    for (const QString& heading : unknown)
        shown += u"„%1“"_s.arg(shownText(heading));
    throw BadLine(line,
                  u"neznámé sloupce: %1. S volbou --ignore-unknown se vynechají."_s.arg(shown.join(u", "_s)));
}

QString TableLayout::targetOf(const QString& heading) const {
    const auto own = std::find_if(columns.begin(), columns.end(), [&heading](const FilmColumn& column) {
        return column.name.compare(heading, Qt::CaseInsensitive) == 0;
    });
    return own != columns.end() ? own->name : tableHeadings::targetOf(heading);
}

/// Who heads a column in Czech and another one "Title" means the title abroad.
int TableLayout::foreignTitleField(const QStringList& header) const {
    int czech = -1;
    int foreign = -1;
    for (int field = 0; field < header.size(); ++field) {
        const QString heading = text::trim(header[field]);
        const QString target = targetOf(heading);
        if (target == u"PuvJm"_s) return -1;
        if (target != u"CZJm"_s) continue;
        int& place = tableHeadings::isEnglishTitle(heading) ? foreign : czech;
        if (place >= 0) return -1;
        place = field;
    }
    return czech >= 0 ? foreign : -1;
}

void TableLayout::place(const QStringList& header, int field, const QString& target, qint64 line) {
    const QString heading = text::trim(header[field]);
    const auto column = std::find_if(columns.begin(), columns.end(), [&target](const FilmColumn& candidate) {
        return candidate.name == target;
    });
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
        throw BadLine(line,
                      u"sloupce „%1“ a „%2“ znamenají totéž. Jeden z nich přejmenujte nebo odstraňte."_s.arg(
                          shownText(text::trim(header[*place])), shownText(heading)));
    }
    *place = field;
    if (column == columns.end()) return;
    column->heading = heading;
    column->isOwn = column->name.compare(heading, Qt::CaseInsensitive) == 0;
}

const FilmColumn& TableLayout::column(QStringView name) const {
    return *std::find_if(columns.begin(), columns.end(),
                         [name](const FilmColumn& column) { return column.name == name; });
}

bool TableLayout::hasPictures() const {
    return cover >= 0 || preview >= 0 || column(u"Obal_ID").field >= 0 || column(u"Nahled_ID").field >= 0;
}

bool TableLayout::isEmpty(const TableRecord& record) const {
    return record.isEmpty(department) && record.isEmpty(cover) && record.isEmpty(preview) &&
           std::all_of(columns.begin(), columns.end(),
                       [&record](const FilmColumn& column) { return record.isEmpty(column.field); });
}
