#include "Importer.h"

#include <QDir>
#include <algorithm>
#include <deque>
#include <memory>
#include <optional>
#include <span>

#include "DataFiles.h"
#include "Interruption.h"
#include "NewPair.h"
#include "RowWriter.h"
#include "platform/errors.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 rowsPerReport = 50;
constexpr qint64 highestKey = 2000000000;
constexpr qint64 pictureBlock = 100000;

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

/// The indexes of a file, taken away until all rows stand, which is faster.
class LaterIndexes final {
 public:
    explicit LaterIndexes(const sqlite::Database& database) : database_(database) {
        const sqlite::Statement list(
            database, "SELECT name, sql FROM sqlite_master WHERE type='index' AND sql NOT NULL");
        QStringList names;
        while (list.step()) {
            names += list.text(0);
            create_ += list.text(1);
        }
        for (const QString& name : std::as_const(names))
            database.exec(("DROP INDEX " + name.toUtf8()).constData());
    }
    void make() const {
        for (const QString& sql : create_) {
            interruption::check();
            database_.exec(sql.toUtf8().constData());
        }
    }

 private:
    const sqlite::Database& database_;
    QStringList create_;
};

/// The reason why a picture cannot be taken over. One without data at all is no such reason.
std::optional<QString> pictureFault(std::optional<QByteArrayView> data, std::optional<QByteArrayView> size) {
    const qint64 length = data ? data->size() : 0;
    const qint64 wanted = size ? size->toLongLong() : 0;
    if (wanted < 0) return u"PicSize je záporné (%1)"_s.arg(wanted);
    if (length == 0 && wanted == 0) return std::nullopt;
    if (!size) return u"má %1 bajtů dat, ale délka PicSize není uvedena"_s.arg(length);
    const qint64 stored = wanted + wanted / pictureBlock + 1;
    if (length == stored) return std::nullopt;
    return u"podle PicSize %1 má mít %2 bajtů dat a má jich %3"_s.arg(wanted).arg(stored).arg(length);
}

class TableImport final {
 public:
    TableImport(OldFile& file, const sqlite::Database& database, const Table& table, ImportReport& report)
        : table_(table), database_(database), report_(report), rows_(file) {}

    /// @param startNext lets the programs for another table begin; it is called meanwhile.
    void run(const importer::Progress& progress, const std::function<void()>& startNext) {
        rows_.begin();
        writer_.emplace(database_, table_.name, rows_);
        TableReport result{table_.title, table_.name, rows_.count(), 0, 0, 0, 0};
        while (rows_.next()) {
            if (result.read++ % rowsPerReport == 0) {
                progress(table_.title, result.read, rows_.count());
                startNext();
            }
            if (result.read > rows_.count()) break;
            if (const auto reason = takeOver(result.read)) {
                ++result.refused;
                report_.refused +=
                    u"%1, %2: %3."_s.arg(table_.title, writer_->nameOf(rows_, result.read), *reason);
            }
        }
        progress(table_.title, result.read, rows_.count());
        checkCount(result);
        if (!writer_->key().isEmpty()) result.nextKey = continueNumbers() + 1;
        addNotes();
        report_.tables.push_back(std::move(result));
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

    void checkCount(const TableReport& result) const {
        if (result.read == rows_.count()) return;
        const QString read = result.read > rows_.count() ? u"víc"_s : QString::number(result.read);
        throw RuntimeError(
            errors::invalidCall,
            u"Nesouhlasí to: tabulka %1 má podle starého souboru %2 řádků a přečíst se jich dá %3. "
            "Soubor je poškozený, nic se nepřevedlo."_s.arg(table_.name)
                .arg(rows_.count())
                .arg(read));
    }

    /// Lets the numbers of new rows go on where those of the old file ended.
    /// @return the highest number given out so far.
    qint64 continueNumbers() {
        const QByteArray name = table_.name.toUtf8();
        const QByteArray key = writer_->key().toUtf8();
        const qint64 highest =
            database_.number(("SELECT IFNULL(MAX(" + key + "),0) FROM " + name).constData());
        // Autonumbers can also be drawn at random; such a last number says nothing.
        const qint64 given = rows_.lastNumber() <= highestKey ? rows_.lastNumber() : 0;
        const qint64 last = std::max({highest, given, qint64{0}});
        database_.exec(("DELETE FROM sqlite_sequence WHERE name='" + name +
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
                u"Filmy bez evidenčního čísla; jsou převedené, ale hlavní seznam je neukazuje, jako je "
                "neukazoval dřív: DVDID %1."_s.arg(unlisted_.join(u", "_s));
        }
        const QStringList leftOut = writer_->leftOut(rows_);
        if (!leftOut.isEmpty()) {
            report_.notes += u"%1: sloupce, které program nezná a které se nepřevádějí: %2."_s.arg(
                table_.title, leftOut.join(u", "_s));
        }
    }

    const Table& table_;
    const sqlite::Database& database_;
    ImportReport& report_;
    OldTable rows_;
    std::optional<RowWriter> writer_;
    QStringList unlisted_;
};

/// The tables of both files, one after the other, with the programs that read the next ones under way.
class PairImport final {
 public:
    PairImport(ImportReport& report, const importer::Progress& progress)
        : report_(report), progress_(progress) {}

    void add(OldFile& file, const sqlite::Database& database, std::span<const Table> tables) {
        for (const Table& table : tables)
            waiting_.push_back([&file, &database, &table, this] {
                return std::make_unique<TableImport>(file, database, table, report_);
            });
        for (const QString& name : file.otherTables())
            report_.notes += u"Tabulka %1 se nepřevádí, program ji nezná."_s.arg(name);
    }

    /// Takes over the next `tables` tables, which belong to the file `database`.
    void run(const sqlite::Database& database, std::size_t tables) {
        sqlite::Transaction transaction(database);
        const LaterIndexes indexes(database);
        for (std::size_t table = 0; table < tables; ++table) {
            if (started_.empty()) startNext();
            const auto current = std::move(started_.front());
            started_.pop_front();
            current->run(progress_, [this] { startNext(); });
        }
        indexes.make();
        // What the new file holds in the end, rather than what was put into it.
        for (TableReport& table : std::span(report_.tables).last(tables))
            table.written = database.number(("SELECT COUNT(*) FROM " + table.name.toUtf8()).constData());
        transaction.commit();
    }

 private:
    void startNext() {
        if (waiting_.empty()) return;
        started_.push_back(waiting_.front()());
        waiting_.pop_front();
    }

    ImportReport& report_;
    const importer::Progress& progress_;
    std::deque<std::function<std::unique_ptr<TableImport>()>> waiting_;
    std::deque<std::unique_ptr<TableImport>> started_;
};

}  // namespace

ImportReport importer::run(const QString& oldFolder, const QString& newFolder, const OldPrograms& programs,
                           const Progress& progress) {
    const auto oldPath = [](const QString& path) {
        return QDir().absoluteFilePath(paths::ignoringCase(path));
    };
    OldFile catalogue(oldPath(dataFiles::cataloguePath(oldFolder)), namesOf(catalogueTables), programs);
    OldFile pictures(oldPath(dataFiles::picturesPath(oldFolder)), namesOf(pictureTables), programs);
    ImportReport report{QDir(oldFolder).absolutePath(), QDir(newFolder).absolutePath(), {}, {}, {}, {}};
    NewPair pair(newFolder, u"import.txt"_s);
    PairImport import(report, progress);
    import.add(catalogue, pair.catalogue(), catalogueTables);
    import.add(pictures, pair.pictures(), pictureTables);
    import.run(pair.catalogue(), std::size(catalogueTables));
    import.run(pair.pictures(), std::size(pictureTables));
    report.finished = QDateTime::currentDateTime();
    interruption::check();
    pair.keep(report.text());
    return report;
}
