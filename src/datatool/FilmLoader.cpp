#include "datatool/FilmLoader.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <optional>
#include <vector>

#include "datatool/CsvReader.h"
#include "datatool/CsvText.h"
#include "datatool/DataFiles.h"
#include "datatool/Departments.h"
#include "datatool/Interruption.h"
#include "datatool/TableColumns.h"
#include "datatool/outputFile.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/sqlite.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

using dataFiles::highestKey;

namespace {

constexpr qint64 filmsPerReport = 500;

struct FilmColumn {
    QString name;
    bool number = false;
    int field = -1;  // in the file; -1 if missing
};

/// Where the columns are in the file.
struct Layout {
    std::vector<FilmColumn> columns;
    int department = -1;  // field with the name of the department; -1 if missing
};

/// A record of the file.
struct Record {
    const QStringList& fields;
    const CsvReader& reader;

    /// True if the file says nothing here, so that the default applies.
    bool isBlank(int field, bool number) const {
        if (field < 0) return true;
        return (number || !reader.isQuoted(field)) && text::trim(fields[field]).isEmpty();
    }
};

/// A faulty line; those after it can be checked all the same.
class BadLine final : public RuntimeError {
    using RuntimeError::RuntimeError;
};

[[noreturn]] void refuse(qint64 line, const QString& what) {
    throw BadLine(errors::invalidCall, u"Řádek %1: %2"_s.arg(line).arg(what));
}

std::vector<FilmColumn> filmColumns(const sqlite::Database& database) {
    std::vector<FilmColumn> columns;
    for (const TableColumn& column : columnsOf(database, u"tDVD"_s))
        columns.push_back({column.name, column.kind == ado::ColumnKind::number});
    return columns;
}

bool isDepartment(const QString& name) {
    return name.compare(u"Oddeleni"_s, Qt::CaseInsensitive) == 0 ||
           name.compare(u"Oddělení"_s, Qt::CaseInsensitive) == 0;
}

void placeFields(Layout& layout, const QStringList& header, qint64 line) {
    auto& columns = layout.columns;
    for (int field = 0; field < header.size(); ++field) {
        const QString name = text::trim(header[field]);
        if (isDepartment(name)) {
            if (layout.department >= 0) refuse(line, u"sloupec \"%1\" je uveden dvakrát."_s.arg(name));
            layout.department = field;
            continue;
        }
        const auto column =
            std::find_if(columns.begin(), columns.end(), [&name](const FilmColumn& candidate) {
                return candidate.name.compare(name, Qt::CaseInsensitive) == 0;
            });
        if (column == columns.end()) refuse(line, u"neznámý sloupec \"%1\"."_s.arg(name));
        if (column->field >= 0) refuse(line, u"sloupec \"%1\" je uveden dvakrát."_s.arg(name));
        column->field = field;
    }
}

/// The default for a field that the file leaves out.
void bindDefault(const sqlite::Statement& insert, int parameter, const QString& column) {
    if (column == u"DVDID"_s || column == u"Oddel_ID"_s) return insert.bindNull(parameter);
    if (column == u"DiskPocet"_s) return insert.bind(parameter, qint64{1});
    if (column == u"Jazyk"_s) return insert.bind(parameter, qint64{2});
    if (column == u"Obal_ID"_s || column == u"Nahled_ID"_s) return insert.bind(parameter, qint64{0});
    insert.bind(parameter, QString(u""_s));
}

int wholeNumber(const FilmColumn& column, const QString& field, qint64 line) {
    bool ok = false;
    const int number = text::trim(field).toInt(&ok);
    if (!ok) refuse(line, u"sloupec %1 má být celé číslo a je \"%2\"."_s.arg(column.name, field));
    if (column.name == u"DVDID"_s && (number < 1 || number > highestKey)) {
        refuse(line, u"DVDID má být od 1 do %1 a je %2."_s.arg(highestKey).arg(number));
    }
    return number;
}

class FilmWriter final {
 public:
    FilmWriter(const sqlite::Database& database, Layout layout)
        : layout_(std::move(layout)),
          insert_(database, insertSql(layout_.columns)),
          number_(database, "UPDATE tDVD SET KatCisl=DVDID WHERE DVDID=last_insert_rowid()"),
          departments_(database) {}

    void write(const Record& record) {
        const qint64 line = record.reader.line();
        bool isNumbered = true;
        int parameter = 0;
        for (const FilmColumn& column : layout_.columns) {
            bindColumn(++parameter, column, record);
            if (column.name == u"KatCisl"_s) isNumbered = !record.isBlank(column.field, false);
        }
        try {
            insert_.step();
        } catch (const RuntimeError& failure) {
            if (failure.number() != errors::databaseConstraint) throw;
            refuse(line, failure.description());
        }
        insert_.reset();
        if (isNumbered) return;
        number_.step();
        number_.reset();
    }

    const QStringList& madeDepartments() const noexcept { return departments_.made(); }

 private:
    void bindColumn(int parameter, const FilmColumn& column, const Record& record) {
        const qint64 line = record.reader.line();
        if (column.name == u"Oddel_ID"_s) {
            if (const auto department = departmentOf(column, record))
                return insert_.bind(parameter, *department);
        }
        if (record.isBlank(column.field, column.number)) return bindDefault(insert_, parameter, column.name);
        const QString& field = record.fields[column.field];
        if (csvField::isNull(field)) return insert_.bindNull(parameter);
        if (!column.number) return insert_.bind(parameter, csvField::textOf(field));
        insert_.bind(parameter, qint64{wholeNumber(column, field, line)});
    }

    /// The key of the department that is named; nothing if none is. One without a name is meant only where
    /// its key stands beside it.
    std::optional<qint64> departmentOf(const FilmColumn& column, const Record& record) {
        if (record.isBlank(layout_.department, false)) return std::nullopt;
        const QString& field = record.fields[layout_.department];
        std::optional<qint64> wish;
        if (!record.isBlank(column.field, true) && !csvField::isNull(record.fields[column.field]))
            wish = wholeNumber(column, record.fields[column.field], record.reader.line());
        if (csvField::isNull(field)) return wish ? std::optional(departments_.keyOf({}, wish)) : std::nullopt;
        if (!wish && text::trim(field).isEmpty()) return std::nullopt;
        return departments_.keyOf(csvField::textOf(field), wish);
    }

    static QByteArray insertSql(const std::vector<FilmColumn>& columns) {
        QByteArrayList names;
        for (const FilmColumn& column : columns)
            names += column.name.toUtf8();
        return ado::insertSql("tDVD", names);
    }

    Layout layout_;
    sqlite::Statement insert_;
    sqlite::Statement number_;
    Departments departments_;
};

/// Collects the bad lines of a file, so that all can be fixed at once.
class BadLines final {
 public:
    void add(const QString& line) {
        if (++count_ <= shown) lines_ += line;
    }
    void refuse() const {
        if (count_ == 0) return;
        QStringList lines = lines_;
        if (count_ > shown) lines += u"… a dalších chybných řádků: %1"_s.arg(count_ - shown);
        lines += u"Chybných řádků je %1, nepřidalo se nic."_s.arg(count_);
        throw RuntimeError(errors::invalidCall, lines.join(u'\n'));
    }

 private:
    static constexpr qint64 shown = 50;
    QStringList lines_;
    qint64 count_ = 0;
};

qint64 countFilms(const sqlite::Database& database) {
    return database.number("SELECT COUNT(*) FROM tDVD");
}

}  // namespace

QString filmLoader::Report::text() const {
    const QString separatorName = separator == u';'   ? u"středník"_s
                                  : separator == u',' ? u"čárka"_s
                                                      : u"tabulátor"_s;
    QString text =
        u"Přidání filmů ze souboru\n\nZe souboru: %1 (kódování %2, oddělovač %3)\nDo složky: %4\n\n"
        "Filmů v souboru: %5\nPřidáno filmů: %6\nOdmítnuto: 0\n"_s.arg(
            QDir::toNativeSeparators(csv), encoding, separatorName, QDir::toNativeSeparators(folder),
            QString::number(read), QString::number(added));
    if (!departments.isEmpty()) text += u"Nová oddělení: %1\n"_s.arg(departments.join(u", "_s));
    return text +
           (agrees() ? u"\nVše souhlasí: v katalogu přibyly všechny filmy ze souboru.\n"_s
                     : u"\nPOZOR, nesouhlasí to: v katalogu nepřibylo tolik filmů, kolik je v souboru.\n"_s);
}

filmLoader::Report filmLoader::load(const QString& folder, const QString& csv,
                                    const std::function<void(qint64)>& progress) {
    const sqlite::Database database = dataFiles::openCatalogue(folder);
    const CsvText file = CsvText::read(csv);
    CsvReader reader(file.text, file.separator);
    const std::optional<QStringList> header = reader.next();
    if (!header) throw RuntimeError(errors::invalidCall, u"Soubor je prázdný: %1"_s.arg(csv));

    sqlite::Transaction transaction(database);
    const qint64 before = countFilms(database);
    Layout layout{filmColumns(database)};
    placeFields(layout, *header, reader.line());
    FilmWriter writer(database, std::move(layout));
    BadLines bad;
    Report report{QFileInfo(csv).absoluteFilePath(),
                  QDir(folder).absolutePath(),
                  file.encoding,
                  file.separator,
                  0,
                  0,
                  {}};
    while (const std::optional<QStringList> fields = reader.next()) {
        interruption::check();
        try {
            if (fields->size() != header->size())
                refuse(reader.line(), u"má %1 polí, hlavička %2."_s.arg(fields->size()).arg(header->size()));
            writer.write({*fields, reader});
        } catch (const BadLine& failure) {
            bad.add(failure.description());
        }
        if (++report.read % filmsPerReport == 0) progress(report.read);
    }
    bad.refuse();
    report.added = countFilms(database) - before;
    report.departments = writer.madeDepartments();
    QSaveFile told(QDir(folder).filePath(u"load.txt"_s));
    if (!told.open(QFile::WriteOnly) || told.write(report.text().toUtf8()) < 0 || !files::sync(told))
        outputFile::failWriting(told.fileName());
    transaction.commit();
    if (!files::commit(told))
        throw RuntimeError(errors::pathAccess, u"Filmy jsou přidané, ale zprávu load.txt nelze zapsat."_s);
    return report;
}
