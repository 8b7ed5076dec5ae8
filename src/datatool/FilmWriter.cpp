#include "datatool/FilmWriter.h"

#include "datatool/BadLine.h"
#include "datatool/CsvText.h"
#include "datatool/DataFiles.h"
#include "datatool/foreignValue.h"
#include "datatool/shownText.h"
#include "platform/QueryShape.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

using dataFiles::highestKey;
using Role = FilmColumn::Role;

namespace {

/// The default for a field that the table leaves out.
void bindDefault(const sqlite::Statement& insert, int parameter, Role role) {
    switch (role) {
        case Role::key:
        case Role::department:
            return insert.bindNull(parameter);
        case Role::discs:
            return insert.bind(parameter, qint64{1});
        case Role::language:
            return insert.bind(parameter, qint64{2});
        case Role::cover:
        case Role::preview:
            return insert.bind(parameter, qint64{0});
        default:
            return insert.bindTextInPlace(parameter, {});
    }
}

int wholeNumber(const FilmColumn& column, const QString& field, qint64 line) {
    bool isNumber = false;
    int number = text::trim(field).toInt(&isNumber);
    // "Jazyk" is what people call the column too.
    if (!isNumber && column.role == Role::language) return foreignValue::language(field).value_or(2);
    if (!isNumber)
        throw BadLine(line, u"sloupec „%1“ má být celé číslo a je „%2“."_s.arg(shownText(column.heading),
                                                                               shownText(field)));
    if (column.role == Role::key && (number < 1 || number > highestKey))
        throw BadLine(line, u"sloupec DVDID má být od 1 do %1 a je %2."_s.arg(highestKey).arg(number));
    return number;
}

QString textOf(const FilmColumn& column, const QString& field) {
    const QString value = csvField::textOf(field);
    return column.isOwn ? value : foreignValue::forColumn(column.name, value);
}

QByteArray insertSql(const std::vector<FilmColumn>& columns) {
    QByteArrayList names;
    for (const FilmColumn& column : columns)
        names += column.name.toUtf8();
    return ado::insertSql("tDVD", names);
}

}  // namespace

FilmWriter::FilmWriter(const sqlite::Database& database, const TableLayout& layout)
    : layout_(layout),
      insert_(database, insertSql(layout.columns)),
      number_(database, "UPDATE tDVD SET KatCisl=DVDID WHERE DVDID=last_insert_rowid()"),
      departments_(database) {}

const FilmColumn& FilmWriter::source(const FilmColumn& column, const TableRecord& record) const {
    if (column.role != Role::title || !record.isBlank(column)) return column;
    const FilmColumn& original = layout_.column(u"PuvJm");
    return record.isNull(original.field) ? column : original;
}

QString FilmWriter::text(const FilmColumn& column, const TableRecord& record) const {
    const FilmColumn& from = source(column, record);
    if (record.isBlank(from) || record.isNull(from.field)) return {};
    return textOf(from, record.fields[from.field]);
}

qint64 FilmWriter::key(const TableRecord& record) const {
    const FilmColumn& column = layout_.column(u"DVDID");
    if (record.isBlank(column) || record.isNull(column.field)) return 0;
    return wholeNumber(column, record.fields[column.field], record.reader.line());
}

void FilmWriter::bind(int parameter, const FilmColumn& column, const TableRecord& record) {
    if (column.role == Role::department) {
        if (const auto department = departmentOf(column, record)) return insert_.bind(parameter, *department);
    }
    const FilmColumn& from = source(column, record);
    if (record.isBlank(from)) return bindDefault(insert_, parameter, column.role);
    const QString& field = record.fields[from.field];
    if (csvField::isNull(field)) return insert_.bindNull(parameter);
    if (!column.isNumber)
        return insert_.bindTextInPlace(parameter, texts_.emplace_back(textOf(from, field).toUtf8()));
    const qint64 number = wholeNumber(column, field, record.reader.line());
    // The keys of another catalogue's pictures, where the table names their files.
    const bool isForeign = (column.role == Role::cover && layout_.cover >= 0) ||
                           (column.role == Role::preview && layout_.preview >= 0);
    insert_.bind(parameter, isForeign ? 0 : number);
}

std::optional<qint64> FilmWriter::departmentOf(const FilmColumn& column, const TableRecord& record) {
    if (record.isBlank(layout_.department, false)) return std::nullopt;
    const QString& field = record.fields[layout_.department];
    std::optional<qint64> wish;
    if (!record.isBlank(column) && !record.isNull(column.field))
        wish = wholeNumber(column, record.fields[column.field], record.reader.line());
    // A department without a name is meant only where its key stands beside it.
    if (!wish && (csvField::isNull(field) || text::trim(field).isEmpty())) return std::nullopt;
    return departments_.keyOf(csvField::isNull(field) ? QString() : csvField::textOf(field), wish);
}

qint64 FilmWriter::write(const TableRecord& record) {
    int parameter = 0;
    texts_.clear();
    texts_.reserve(layout_.columns.size());  // what is bound must not move
    for (const FilmColumn& column : layout_.columns)
        bind(++parameter, column, record);
    try {
        insert_.step();
    } catch (const RuntimeError& failure) {
        if (failure.number() != errors::databaseConstraint) throw;
        throw BadLine(record.reader.line(), failure.description());
    }
    insert_.reset();
    const qint64 film = sqlite3_last_insert_rowid(sqlite3_db_handle(insert_.handle()));
    if (record.isBlank(layout_.column(u"KatCisl"))) {
        number_.step();
        number_.reset();
    }
    return film;
}
