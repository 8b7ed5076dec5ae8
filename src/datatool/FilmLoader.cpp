#include "datatool/FilmLoader.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <optional>

#include "datatool/BadLine.h"
#include "datatool/CsvText.h"
#include "datatool/DataFiles.h"
#include "datatool/FilmWriter.h"
#include "datatool/Genres.h"
#include "datatool/Interruption.h"
#include "datatool/KnownFilms.h"
#include "datatool/TablePictures.h"
#include "datatool/TrialCatalogue.h"
#include "datatool/outputFile.h"
#include "datatool/shownText.h"
#include "platform/files.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

using blob::Group;

namespace {

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

/// Loads the films of a table one by one.
class TableLoad final {
 public:
    /// @param pictures null when the table names none. @param lines of the table.
    TableLoad(const sqlite::Database& database, const TableLayout& layout, TablePictures* pictures,
              const filmLoader::Options& options, LoadReport& report, qsizetype lines)
        : database_(database),
          layout_(layout),
          pictures_(pictures),
          options_(options),
          report_(report),
          known_(database, lines),
          genres_(database),
          writer_(database, layout),
          key_(layout.column(u"DVDID")),
          number_(layout.column(u"KatCisl")),
          title_(layout.column(u"CZJm")),
          year_(layout.column(u"Rok")),
          genre_(layout.column(u"Zanr")),
          language_(layout.column(u"Jazyk")),
          coverKey_(layout.column(u"Obal_ID")),
          previewKey_(layout.column(u"Nahled_ID")) {}

    void add(const TableRecord& record) {
        const qint64 line = record.reader.line();
        if (layout_.isEmpty(record)) {
            report_.empty += u"řádek %1"_s.arg(line);
            return;
        }
        KnownFilms::Film film(writer_.text(title_, record), writer_.text(year_, record),
                              writer_.text(number_, record), writer_.key(record));
        if (isKnown(film, line) && options_.skipKnown) {
            ++report_.skipped;
            return;
        }
        if (const auto other = known_.lineOf(film.key)) {
            const QString where = *other == 0 ? u"v katalogu už je"_s : u"už je na řádku %1"_s.arg(*other);
            throw BadLine(line, u"film s DVDID %1 %2. Vynechá ho volba --skip-known."_s.arg(
                                    QString::number(film.key), where));
        }
        const qint64 key = writer_.write(record);
        if (film.title.trimmed().isEmpty()) report_.untitled += u"řádek %1, DVDID %2"_s.arg(line).arg(key);
        if (record.isNull(number_.field) || record.isNull(language_.field)) ++report_.unlisted;
        if (key_.field >= 0) film.key = key;
        if (record.isBlank(number_)) film.setNumber(QString::number(key));
        known_.add(film, line);
        genres_.use(writer_.text(genre_, record));
        setPicture(key, record, layout_.cover, Group::cover, coverKey_);
        setPicture(key, record, layout_.preview, Group::preview, previewKey_);
    }

    /// Call after the last film.
    void finish() {
        report_.departments = writer_.madeDepartments();
        report_.genres = genres_.missing();
        if (options_.addGenres) genres_.addMissing();
        if (pictures_ == nullptr) return;
        report_.pictures = pictures_->stored();
        report_.unlinked = pictures_->dropped();
    }

 private:
    bool isKnown(const KnownFilms::Film& film, qint64 line) {
        const auto match = known_.find(film);
        if (!match) return false;
        const QString year = film.year.isEmpty() ? QString() : u" (%1)"_s.arg(shownText(film.year));
        const QString told =
            u"řádek %1, %2%3: %4"_s.arg(QString::number(line), shownText(film.title), year, match->reason);
        if (match->line == 0) {
            report_.known += told;
        } else {
            report_.repeated += told + u" jako na řádku %1"_s.arg(match->line);
        }
        return true;
    }

    /// @param file the field that names the picture's file. @param column the one with its key.
    void setPicture(qint64 film, const TableRecord& record, int file, Group group, const FilmColumn& column) {
        const bool hasKey =
            !record.isBlank(column) && !record.isNull(column.field) && record.fields[column.field] != u"0"_s;
        if (file < 0 && hasKey) pictures_->dropForeignKey(film, group);
        if (record.isBlank(file, true) || record.isNull(file)) return;
        // Beside the key that an export has written, the file is what the program once stored.
        const qint64 key = pictures_->store(film, csvField::textOf(record.fields[file]), group, hasKey,
                                            record.reader.line());
        const sqlite::Statement update(database_,
                                       "UPDATE tDVD SET " + column.name.toUtf8() + "=? WHERE DVDID=?");
        update.bind(1, key);
        update.bind(2, film);
        update.step();
    }

    const sqlite::Database& database_;
    const TableLayout& layout_;
    TablePictures* pictures_;
    const filmLoader::Options& options_;
    LoadReport& report_;
    KnownFilms known_;
    Genres genres_;
    FilmWriter writer_;
    const FilmColumn& key_;
    const FilmColumn& number_;
    const FilmColumn& title_;
    const FilmColumn& year_;
    const FilmColumn& genre_;
    const FilmColumn& language_;
    const FilmColumn& coverKey_;
    const FilmColumn& previewKey_;
};

qint64 countFilms(const sqlite::Database& database) {
    return database.number("SELECT COUNT(*) FROM tDVD");
}

void commit(sqlite::Transaction& transaction, const LoadReport& report) {
    QSaveFile told(QDir(report.folder).filePath(u"load.txt"_s));
    if (!told.open(QFile::WriteOnly)) outputFile::failWriting(told.fileName());
    files::keepToOwner(told);
    if (told.write(report.text().toUtf8()) < 0 || !files::sync(told))
        outputFile::failWriting(told.fileName());
    transaction.commit();
    if (!files::commit(told))
        throw RuntimeError(errors::pathAccess, u"Filmy jsou přidané, ale zprávu load.txt nelze zapsat."_s);
}

/// A row of separators or blanks alone, as spreadsheets leave them below a table.
bool isBlank(const TableRecord& record) {
    for (int field = 0; field < record.fields.size(); ++field) {
        if (!record.isEmpty(field)) return false;
    }
    return true;
}

}  // namespace

LoadReport filmLoader::load(const QString& folder, const QString& csv, const Options& options,
                            const Progress& progress) {
    std::optional<TrialCatalogue> trial;
    if (options.dryRun) trial.emplace(folder);
    std::optional<sqlite::Database> own;
    const sqlite::Database& database =
        trial ? trial->database() : own.emplace(dataFiles::openCatalogue(folder));
    const QString path = QFileInfo(csv).isDir() ? QDir(csv).filePath(u"films.csv"_s) : csv;
    const CsvText file = CsvText::read(path);
    CsvReader reader(file.text, file.separator);
    const std::optional<QStringList> header = reader.next();
    if (!header) throw RuntimeError(errors::invalidCall, u"Soubor je prázdný: %1"_s.arg(path));

    LoadReport report{QFileInfo(path).absoluteFilePath(),
                      QDir(folder).absolutePath(),
                      file.encoding,
                      file.separator,
                      options.dryRun,
                      options.addGenres};
    const TableLayout layout(database, *header, reader.line(), options.ignoreUnknown);
    report.ignored = layout.unknown;
    report.foreignTitle = layout.foreignTitle;
    std::optional<TablePictures> pictures;
    if (layout.hasPictures())
        pictures.emplace(database, trial ? trial->pictures() : dataFiles::picturesPath(folder),
                         QFileInfo(report.csv).path(), options.dryRun);
    sqlite::Transaction transaction(database);
    TableLoad films(database, layout, pictures ? &*pictures : nullptr, options, report,
                    file.text.count(u'\n'));
    const qint64 before = countFilms(database);
    BadLines bad;
    while (const std::optional<QStringList> fields = reader.next()) {
        interruption::check();
        const TableRecord record{*fields, reader};
        if (isBlank(record)) continue;
        ++report.read;
        try {
            if (fields->size() != header->size()) {
                throw BadLine(reader.line(),
                              u"polí je %1, v hlavičce %2."_s.arg(fields->size()).arg(header->size()));
            }
            films.add(record);
        } catch (const BadLine& failure) {
            bad.add(failure.description());
        }
        progress(u"Přidávání filmů"_s, reader.position(), file.text.size());
    }
    bad.refuse();
    films.finish();
    report.added = countFilms(database) - before;
    if (!options.dryRun) commit(transaction, report);
    return report;
}
