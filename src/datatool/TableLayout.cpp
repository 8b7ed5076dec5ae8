#include "datatool/TableLayout.h"

#include <algorithm>

#include "datatool/BadLine.h"
#include "datatool/CsvText.h"
#include "datatool/TableColumns.h"
#include "datatool/tableHeadings.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

bool TableRecord::isBlank(int field, bool isNumber) const {
    if (field < 0) return true;
    return (isNumber || !reader.isQuoted(field)) && text::trim(fields[field]).isEmpty();
}

bool TableRecord::isNull(int field) const {
    return field >= 0 && csvField::isNull(fields[field]);
}

TableLayout::TableLayout(const sqlite::Database& database, const QStringList& header, qint64 line,
                         bool ignoreUnknown) {
    for (const TableColumn& column : columnsOf(database, u"tDVD"_s))
        columns.push_back({column.name, column.kind == ado::ColumnKind::number});
    for (int field = 0; field < header.size(); ++field)
        place(header, field, line);
    if (ignoreUnknown || unknown.isEmpty()) return;
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
        unknown += heading;
        return;
    }
    if (*place >= 0) {
        throw BadLine(line, u"sloupce \"%1\" a \"%2\" jsou oba %3."_s.arg(text::trim(header[*place]), heading,
                                                                          isOwn ? column->name : target));
    }
    *place = field;
    if (column != columns.end()) column->isOwn = isOwn;
}

const FilmColumn& TableLayout::column(QStringView name) const {
    return *std::find_if(columns.begin(), columns.end(),
                         [name](const FilmColumn& column) { return column.name == name; });
}
