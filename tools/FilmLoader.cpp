#include "FilmLoader.h"

#include <QFile>
#include <QStringDecoder>
#include <vector>

#include "CsvReader.h"
#include "DataFiles.h"
#include "core/mDatabase.h"
#include "platform/errors.h"
#include "platform/password.h"
#include "platform/sqlite.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 filmsPerReport = 500;
constexpr int highestKey = 2000000000;

struct FilmColumn {
    QString name;
    bool number = false;
    int field = -1;  // in the file; -1 when the file does not have it
};

QString readText(const QString& path) {
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        throw RuntimeError(errors::fileNotFound, u"Soubor nelze číst: %1"_s.arg(path));
    }
    const QByteArray bytes = file.readAll();
    // Without a state it also sees a character that is cut off at the end. It takes a byte order mark away.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    if (decoder.hasError()) {
        throw RuntimeError(errors::invalidCall, u"Soubor není v kódování UTF-8: %1"_s.arg(path));
    }
    return text;
}

[[noreturn]] void refuse(qint64 line, const QString& what) {
    throw RuntimeError(errors::invalidCall, u"Řádek %1: %2"_s.arg(line).arg(what));
}

std::vector<FilmColumn> filmColumns(const sqlite::Database& database) {
    std::vector<FilmColumn> columns;
    const sqlite::Statement info(database, "SELECT name, type FROM pragma_table_info('tDVD')");
    while (info.step())
        columns.push_back({info.text(0), info.text(1) == u"INTEGER"_s});
    return columns;
}

void placeFields(std::vector<FilmColumn>& columns, const QStringList& header, qint64 line) {
    for (int field = 0; field < header.size(); ++field) {
        const QString name = text::trim(header[field]);
        const auto column =
            std::find_if(columns.begin(), columns.end(), [&name](const FilmColumn& candidate) {
                return candidate.name.compare(name, Qt::CaseInsensitive) == 0;
            });
        if (column == columns.end()) refuse(line, u"neznámý sloupec \"%1\"."_s.arg(name));
        if (column->field >= 0) refuse(line, u"sloupec \"%1\" je uveden dvakrát."_s.arg(name));
        column->field = field;
    }
}

/// What a new film holds where the file says nothing.
void bindDefault(const sqlite::Statement& insert, int parameter, const QString& column) {
    if (column == u"DVDID"_s || column == u"Oddel_ID"_s) return insert.bindNull(parameter);
    if (column == u"DiskPocet"_s) return insert.bind(parameter, qint64{1});
    if (column == u"Jazyk"_s) return insert.bind(parameter, qint64{2});
    if (column == u"Obal_ID"_s || column == u"Nahled_ID"_s) return insert.bind(parameter, qint64{0});
    insert.bind(parameter, QString(u""_s));
}

void bindField(const sqlite::Statement& insert, int parameter, const FilmColumn& column, const QString& field,
               qint64 line) {
    if (text::trim(field).isEmpty()) return bindDefault(insert, parameter, column.name);
    if (!column.number) return insert.bind(parameter, field);
    bool ok = false;
    const int number = text::trim(field).toInt(&ok);
    if (!ok) refuse(line, u"sloupec %1 má být celé číslo a je \"%2\"."_s.arg(column.name, field));
    // Keys are counted on from the highest one, and the program knows them as 32-bit numbers.
    if (column.name == u"DVDID"_s && (number < 1 || number > highestKey)) {
        refuse(line, u"DVDID má být od 1 do %1 a je %2."_s.arg(highestKey).arg(number));
    }
    insert.bind(parameter, qint64{number});
}

sqlite::Database openCatalogue(const QString& path) {
    try {
        sqlite::Database database(path, sqlite::Database::Mode::readWrite);
        password::checkHeader(database, databasePassword());
        return database;
    } catch (const RuntimeError& failure) {
        throw RuntimeError(failure.number(), u"%1 (%2)"_s.arg(failure.description(), path));
    }
}

class FilmWriter final {
 public:
    FilmWriter(const sqlite::Database& database, std::vector<FilmColumn> columns)
        : columns_(std::move(columns)),
          insert_(database, insertSql(columns_)),
          number_(database, "UPDATE tDVD SET KatCisl=DVDID WHERE DVDID=last_insert_rowid() AND KatCisl=''") {}

    void write(const QStringList& fields, qint64 line) const {
        for (int at = 0; at < static_cast<int>(columns_.size()); ++at) {
            const FilmColumn& column = columns_[static_cast<std::size_t>(at)];
            if (column.field < 0) {
                bindDefault(insert_, at + 1, column.name);
            } else {
                bindField(insert_, at + 1, column, fields[column.field], line);
            }
        }
        try {
            insert_.step();
        } catch (const RuntimeError& failure) {
            refuse(line, failure.description());
        }
        insert_.reset();
        number_.step();
        number_.reset();
    }

 private:
    static QByteArray insertSql(const std::vector<FilmColumn>& columns) {
        QByteArray names;
        QByteArray marks;
        for (const FilmColumn& column : columns) {
            names += (names.isEmpty() ? "" : ",") + column.name.toUtf8();
            marks += marks.isEmpty() ? "?" : ",?";
        }
        return "INSERT INTO tDVD (" + names + ") VALUES (" + marks + ')';
    }

    std::vector<FilmColumn> columns_;
    sqlite::Statement insert_;
    sqlite::Statement number_;
};

}  // namespace

qint64 filmLoader::load(const QString& folder, const QString& csv,
                        const std::function<void(qint64)>& progress) {
    const QString path = dataFiles::cataloguePath(folder);
    const sqlite::Database database = openCatalogue(path);
    CsvReader reader(readText(csv));
    const std::optional<QStringList> header = reader.next();
    if (!header) throw RuntimeError(errors::invalidCall, u"Soubor je prázdný: %1"_s.arg(csv));

    sqlite::Transaction transaction(database);
    std::vector<FilmColumn> columns = filmColumns(database);
    placeFields(columns, *header, reader.line());
    const FilmWriter writer(database, std::move(columns));
    qint64 films = 0;
    while (const std::optional<QStringList> fields = reader.next()) {
        if (fields->size() != header->size()) {
            refuse(reader.line(), u"má %1 polí, hlavička %2."_s.arg(fields->size()).arg(header->size()));
        }
        writer.write(*fields, reader.line());
        if (++films % filmsPerReport == 0) progress(films);
    }
    transaction.commit();
    return films;
}
