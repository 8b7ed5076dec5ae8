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
#include "datatool/outputFile.h"
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
    /// @param pictures null when the table names none.
    TableLoad(const sqlite::Database& database, const TableLayout& layout, TablePictures* pictures,
              const filmLoader::Options& options, LoadReport& report)
        : database_(database),
          layout_(layout),
          pictures_(pictures),
          options_(options),
          report_(report),
          known_(database),
          genres_(database),
          writer_(database, layout) {}

    void add(const TableRecord& record) {
        if (!known_.isEmpty() && isKnown(record) && options_.skipKnown) {
            ++report_.skipped;
            return;
        }
        const qint64 film = writer_.write(record);
        genres_.use(writer_.text(u"Zanr", record));
        storePicture(film, record, layout_.cover, Group::cover, "UPDATE tDVD SET Obal_ID=? WHERE DVDID=?");
        storePicture(film, record, layout_.preview, Group::preview,
                     "UPDATE tDVD SET Nahled_ID=? WHERE DVDID=?");
    }

    /// Call after the last film.
    void finish() {
        report_.departments = writer_.madeDepartments();
        report_.genres = genres_.missing();
        if (options_.addGenres) genres_.addMissing();
        if (pictures_ != nullptr) report_.pictures = pictures_->stored();
    }

 private:
    bool isKnown(const TableRecord& record) {
        const QString title = writer_.text(u"CZJm", record);
        const QString year = writer_.text(u"Rok", record);
        const auto reason = known_.find(title, year, writer_.text(u"KatCisl", record));
        if (!reason) return false;
        report_.known += u"řádek %1, %2 (%3): %4"_s.arg(record.reader.line()).arg(title, year, *reason);
        return true;
    }

    void storePicture(qint64 film, const TableRecord& record, int field, Group group, const char* setKey) {
        if (record.isBlank(field, true) || record.isNull(field)) return;
        const qint64 key =
            pictures_->store(film, csvField::textOf(record.fields[field]), group, record.reader.line());
        const sqlite::Statement update(database_, setKey);
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

/// A row of separators alone, as spreadsheets leave them below a table.
bool isBlank(const QStringList& fields, const CsvReader& reader) {
    if (fields.size() < 2) return false;
    for (qsizetype field = 0; field < fields.size(); ++field) {
        if (reader.isQuoted(field) || !fields[field].trimmed().isEmpty()) return false;
    }
    return true;
}

}  // namespace

LoadReport filmLoader::load(const QString& folder, const QString& csv, const Options& options,
                            const Progress& progress) {
    const sqlite::Database database = dataFiles::openCatalogue(folder);
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
    // Spilled pages would be written to the file before it is decided that they stay.
    if (options.dryRun) database.exec("PRAGMA cache_spill=OFF");
    std::optional<TablePictures> pictures;
    if (layout.hasPictures())
        pictures.emplace(database, report.folder, QFileInfo(report.csv).path(), options.dryRun);
    sqlite::Transaction transaction(database);
    TableLoad films(database, layout, pictures ? &*pictures : nullptr, options, report);
    const qint64 before = countFilms(database);
    BadLines bad;
    while (const std::optional<QStringList> fields = reader.next()) {
        interruption::check();
        if (isBlank(*fields, reader)) continue;
        ++report.read;
        try {
            if (fields->size() != header->size()) {
                throw BadLine(reader.line(),
                              u"má %1 polí, hlavička %2."_s.arg(fields->size()).arg(header->size()));
            }
            films.add({*fields, reader});
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
