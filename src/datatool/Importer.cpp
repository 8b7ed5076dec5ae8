#include "datatool/Importer.h"

#include <QDir>
#include <algorithm>
#include <deque>
#include <memory>
#include <optional>
#include <span>

#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/NewPair.h"
#include "datatool/RowWriter.h"
#include "film/mBlobDATA.h"
#include "platform/errors.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

using dataFiles::highestKey;

namespace {

constexpr qint64 stepsOfTable = 200;

struct Table {
    QString name;
    QString title;
};

const Table pictureTables[] = {{u"tPicture"_s, u"Obrázky"_s}};
const Table catalogueTables[] = {{u"tDVD"_s, u"Filmy"_s},
                                 {u"tZanr"_s, u"Žánry"_s},
                                 {u"tOddeleni"_s, u"Oddělení"_s},
                                 {u"tUser"_s, u"Zákazníci"_s},
                                 {u"tPujcky"_s, u"Výpůjčky"_s}};

QStringList namesOf(std::span<const Table> tables) {
    QStringList names;
    for (const Table& table : tables)
        names += table.name;
    return names;
}

/// Why a picture cannot be imported, if so. Missing data alone is no reason.
std::optional<QString> pictureFault(std::optional<QByteArrayView> data, std::optional<QByteArrayView> size) {
    const qint64 length = data ? data->size() : 0;
    const qint64 wanted = size ? size->toLongLong() : 0;
    if (wanted < 0) return u"PicSize je záporné (%1)"_s.arg(wanted);
    if (length == 0 && wanted == 0) return std::nullopt;
    if (!size) return u"má %1 bajtů dat, ale délka PicSize není uvedena"_s.arg(length);
    const qint64 stored = blob::storedLength(wanted);
    if (length == stored) return std::nullopt;
    return u"podle PicSize %1 má mít %2 bajtů dat a má jich %3"_s.arg(wanted).arg(stored).arg(length);
}

class TableImport final {
 public:
    TableImport(OldFile& file, const Table& table, ImportReport& report)
        : table_(table), report_(report), rows_(file) {}

    /// Call before the first step.
    void begin(const sqlite::Database& database) {
        database_ = &database;
        rows_.begin();
        writer_.emplace(database, table_.name, rows_);
        result_ = {table_.title, table_.name, rows_.count(), 0, 0, 0, 0};
    }

    /// Imports a small part of the rows.
    /// @return false when there are no more.
    bool step(const importer::Progress& progress) {
        for (qint64 rows = 1 + rows_.count() / stepsOfTable; rows > 0; --rows) {
            if (!rows_.next()) return false;
            if (++result_.read > rows_.count()) return false;
            if (const auto reason = takeOver(result_.read)) {
                ++result_.refused;
                report_.refused +=
                    u"%1, %2: %3."_s.arg(table_.title, writer_->nameOf(rows_, result_.read), *reason);
            }
        }
        progress(table_.title, result_.read, rows_.count());
        return true;
    }

    /// Call after the last step.
    void end() {
        checkCount();
        // Counted in the new file rather than while writing to it.
        result_.written = database_->number(("SELECT COUNT(*) FROM " + table_.name.toUtf8()).constData());
        if (!writer_->key().isEmpty()) result_.nextKey = continueNumbers() + 1;
        addNotes();
        report_.tables.push_back(std::move(result_));
    }

 private:
    std::optional<QString> takeOver(qint64 number) {
        if (table_.name == u"tPicture"_s) {
            const auto data = writer_->value(rows_, u"PicDat");
            const auto size = writer_->value(rows_, u"PicSize");
            if (auto fault = pictureFault(data, size)) return fault;
            if (!data || data->isEmpty()) {
                report_.notes += u"Obrázek bez dat převeden jako řádek bez dat: %1 (film %2)."_s.arg(
                    writer_->nameOf(rows_, number),
                    QString::fromUtf8(writer_->value(rows_, u"PicDVDID").value_or("neuveden")));
            }
        }
        if (auto reason = writer_->write(rows_)) return reason;
        if (table_.name == u"tDVD"_s && !writer_->value(rows_, u"KatCisl"))
            unlisted_ += QString::fromUtf8(writer_->value(rows_, u"DVDID").value_or(""));
        return std::nullopt;
    }

    void checkCount() const {
        if (result_.read == rows_.count()) return;
        const QString read = result_.read > rows_.count() ? u"víc"_s : QString::number(result_.read);
        throw RuntimeError(
            errors::invalidCall,
            u"Nesouhlasí to: tabulka %1 má podle starého souboru %2 řádků a přečíst se jich dá %3. "
            "Soubor je poškozený, nic se nepřevedlo."_s.arg(table_.name)
                .arg(rows_.count())
                .arg(read));
    }

    /// Continues the old file's numbering of new rows.
    /// @return the highest number assigned so far.
    qint64 continueNumbers() {
        const QByteArray name = table_.name.toUtf8();
        const QByteArray key = writer_->key().toUtf8();
        const qint64 highest =
            database_->number(("SELECT IFNULL(MAX(" + key + "),0) FROM " + name).constData());
        // Autonumbers can also be random; the last number says nothing then.
        const qint64 given = rows_.lastNumber() <= highestKey ? rows_.lastNumber() : 0;
        const qint64 last = std::max({highest, given, qint64{0}});
        database_->exec(("DELETE FROM sqlite_sequence WHERE name='" + name +
                         "'; INSERT INTO sqlite_sequence (name, seq) VALUES ('" + name + "'," +
                         QByteArray::number(last) + ')')
                            .constData());
        if (last > highestKey) {
            report_.notes += u"%1: nejvyšší číslo je %2, nové řádky už brzy nebude možné přidávat."_s.arg(
                table_.title, QString::number(last));
        }
        return last;
    }

    void addNotes() {
        if (!unlisted_.isEmpty()) {
            report_.notes +=
                u"Filmy bez katalogového čísla jsou převedené, ale hlavní seznam je stejně jako dřív "
                "neukazuje: DVDID %1."_s.arg(unlisted_.join(u", "_s));
        }
        const QStringList leftOut = writer_->leftOut(rows_);
        if (!leftOut.isEmpty()) {
            report_.notes += u"%1: sloupce, které program nezná a které se nepřevádějí: %2."_s.arg(
                table_.title, leftOut.join(u", "_s));
        }
    }

    const Table& table_;
    const sqlite::Database* database_ = nullptr;
    ImportReport& report_;
    OldTable rows_;
    std::optional<RowWriter> writer_;
    TableReport result_;
    QStringList unlisted_;
};

/// One of the two files. The programs that read its next table already run while one is imported.
class FileImport final {
 public:
    FileImport(const QString& path, const OldPrograms& programs, std::span<const Table> tables)
        : file_(path, programs), waiting_(tables) {}

    /// Checks the old file and starts the programs for the first table.
    void look() {
        file_.begin(namesOf(waiting_));
        for (const QString& name : file_.otherTables())
            report_.notes += u"Tabulka %1 se nepřevádí, program ji nezná."_s.arg(name);
        startNext();
    }

    /// Call before the first step.
    void begin(const sqlite::Database& database) {
        transaction_.emplace(database);
        database_ = &database;
    }

    /// Imports a small part of the file, so that both can be read side by side.
    /// @return false when all is done.
    bool step(const importer::Progress& progress) {
        startNext();
        if (started_.empty()) return false;
        TableImport& table = *started_.front();
        if (!isBegun_) table.begin(*database_);
        isBegun_ = table.step(progress);
        if (isBegun_) return true;
        table.end();
        started_.pop_front();
        return true;
    }

    void commit() { transaction_->commit(); }
    const ImportReport& report() const noexcept { return report_; }

 private:
    void startNext() {
        if (waiting_.empty()) return;
        started_.push_back(std::make_unique<TableImport>(file_, waiting_.front(), report_));
        waiting_ = waiting_.subspan(1);
    }

    OldFile file_;
    const sqlite::Database* database_ = nullptr;
    std::span<const Table> waiting_;
    std::optional<sqlite::Transaction> transaction_;
    ImportReport report_;
    std::deque<std::unique_ptr<TableImport>> started_;
    bool isBegun_ = false;
};

void add(ImportReport& report, const ImportReport& part) {
    report.tables.insert(report.tables.end(), part.tables.begin(), part.tables.end());
    report.refused += part.refused;
    report.notes += part.notes;
}

}  // namespace

ImportReport importer::run(const QString& oldFolder, const QString& newFolder, const OldPrograms& programs,
                           const Progress& progress) {
    const auto oldPath = [](const QString& path) {
        return QDir().absoluteFilePath(paths::ignoringCase(path));
    };
    // Outlives what writes into it, but is created only once the old files have been checked.
    std::optional<NewPair> pair;
    FileImport catalogue(oldPath(dataFiles::cataloguePath(oldFolder)), programs, catalogueTables);
    FileImport pictures(oldPath(dataFiles::picturesPath(oldFolder)), programs, pictureTables);
    catalogue.look();
    pictures.look();
    ImportReport report{QDir(oldFolder).absolutePath(), QDir(newFolder).absolutePath(), {}, {}, {}, {}};
    pair.emplace(newFolder, u"import.txt"_s);
    catalogue.begin(pair->catalogue());
    pictures.begin(pair->pictures());
    // Side by side, as each export keeps only one processor busy.
    while (catalogue.step(progress))
        pictures.step([](const QString&, qint64, qint64) {});
    while (pictures.step(progress)) {
    }
    catalogue.commit();
    pictures.commit();
    add(report, catalogue.report());
    add(report, pictures.report());
    report.finished = QDateTime::currentDateTime();
    interruption::check();
    pair->keep(report.text());
    return report;
}
