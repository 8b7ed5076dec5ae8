#include "datatool/Salvage.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <functional>
#include <optional>

#include "core/pairReplacement.h"
#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/TableColumns.h"
#include "datatool/outputFile.h"
#include "platform/ado.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 rowsPerCheck = 1000;

bool isDamage(int resultCode) {
    const int code = resultCode & 0xFF;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB || code == SQLITE_IOERR;
}

/// A number of the damaged file; nothing when it cannot be read.
std::optional<qint64> readable(const sqlite::Database& damaged, const QByteArray& sql) {
    try {
        return damaged.number(sql.constData());
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

QStringList tablesOf(const sqlite::Database& database) {
    QStringList names;
    const sqlite::Statement tables(database,
                                   "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE "
                                   "'sqlite%' ORDER BY rowid");
    while (tables.step())
        names += tables.text(0);
    return names;
}

/// One table on its way.
class TableCopy final {
 public:
    TableCopy(const sqlite::Database& damaged, const sqlite::Database& made, const QString& table)
        : columns_(namesOf(made, table)),
          rows_(damaged, "SELECT rowid," + columns_.join(',') + " FROM " + table.toUtf8() +
                             " NOT INDEXED WHERE rowid>? AND rowid<=? ORDER BY rowid"),
          insert_(made, ado::insertSql(table.toUtf8(), columns_)) {}

    /// Where a row cannot be read, looks for the next key from which on rows can be: pages hold neighbouring
    /// keys, so that each damaged page costs some thousand seeks at most, however far its keys reach.
    /// @param upTo the highest key that there may be.
    /// @param step is told from time to time up to which key all is done.
    /// @return the key behind which nothing could be read; `upTo` when the end was reached.
    qint64 run(qint64 upTo, const std::function<void(qint64 key)>& step) {
        qint64 above = -1;
        while (true) {
            step(above);
            const qint64 read = copyRange(above, upTo, step);
            if (read == upTo) return upTo;
            const qint64 next = nextReadable(read, upTo, step);
            if (next == upTo) return read;
            lost_ += next - std::max<qint64>(read, 0);
            above = next;
        }
    }

    qint64 copied() const noexcept { return copied_; }
    qint64 lost() const noexcept { return lost_; }

 private:
    static QByteArrayList namesOf(const sqlite::Database& made, const QString& table) {
        QByteArrayList names;
        for (const TableColumn& column : columnsOf(made, table))
            names += column.name.toUtf8();
        return names;
    }

    /// @return the key up to which all is read.
    qint64 copyRange(qint64 above, qint64 upTo, const std::function<void(qint64 key)>& step) {
        qint64 read = above;
        rows_.reset();
        rows_.bind(1, above);
        rows_.bind(2, upTo);
        while (true) {
            // Not Statement::step, which would report each of the many failures.
            const int result = sqlite3_step(rows_.handle());
            if (result == SQLITE_DONE) return upTo;
            if (result != SQLITE_ROW) {
                if (!isDamage(result)) sqlite::throwFailure(sqlite3_db_handle(rows_.handle()), result);
                return read;
            }
            const qint64 key = rows_.number(0);
            if (key <= read || key > upTo) return read;
            insert();
            read = key;
            if (++copied_ % rowsPerCheck == 0) step(key);
        }
    }

    /// The lowest key above `read` behind which a row, or the end, can be read; `upTo` without one.
    qint64 nextReadable(qint64 read, qint64 upTo, const std::function<void(qint64 key)>& step) {
        // More keys than a page has room for rows.
        constexpr qint64 oneByOne = 4096;
        constexpr qint64 growth = 8;
        qint64 unreadable = read;
        qint64 next = read + 1;
        while (next < upTo && !isReadable(next, upTo)) {
            unreadable = next;
            const qint64 gap = next - read;
            const qint64 further = next + (gap < oneByOne ? 1 : gap / growth);
            next = std::max(next + 1, std::min(further, upTo - 1));
            step(read);
        }
        if (next >= upTo) return upTo;
        while (next - unreadable > 1) {
            const qint64 middle = unreadable + (next - unreadable) / 2;
            (isReadable(middle, upTo) ? next : unreadable) = middle;
        }
        return next;
    }

    /// Whether the first row behind a key, or that there is none, can be read.
    bool isReadable(qint64 above, qint64 upTo) const {
        rows_.reset();
        rows_.bind(1, above);
        rows_.bind(2, upTo);
        const int result = sqlite3_step(rows_.handle());
        if (result != SQLITE_ROW) return result == SQLITE_DONE;
        return rows_.number(0) > above && rows_.number(0) <= upTo;
    }

    void insert() const {
        for (int column = 1; column <= static_cast<int>(columns_.size()); ++column)
            sqlite3_bind_value(insert_.handle(), column, sqlite3_column_value(rows_.handle(), column));
        insert_.step();
        insert_.reset();
    }

    QByteArrayList columns_;
    sqlite::Statement rows_;
    sqlite::Statement insert_;
    qint64 copied_ = 0;
    qint64 lost_ = 0;
};

// The file format of SQLite 3, "The Database Header" and "B-tree Pages".
constexpr qsizetype headerLength = 100;
constexpr qint64 pageSize = 4096;  // of files that the program has made

/// Puts the first bytes of the new file over those of the copy. The size counts because the number of changes
/// that a new file has stands twice in its header; its list of free pages is empty.
void putStart(const QString& copy, QByteArray start) {
    constexpr qint64 sizeOffset = 28;
    QFile file(copy);
    if (!file.open(QFile::ReadWrite)) outputFile::failWriting(copy);
    qToBigEndian(static_cast<quint32>(file.size() / pageSize), start.data() + sizeOffset);
    if (file.write(start) != start.size() || !file.flush()) outputFile::failWriting(copy);
}

/// Plays in what another program left in the file's log.
void foldLog(const QString& path, const QString& copy) {
    const QString log = pairReplacement::companionOf(path, pairReplacement::log);
    if (!QFileInfo::exists(log)) return;
    files::copy(log, copy + pairReplacement::log.toString());
    skipFailure([&] {
        sqlite::Database(copy, sqlite::Database::Mode::readWrite).exec("PRAGMA journal_mode=DELETE");
    });
    for (const QString& ending : {pairReplacement::log.toString(), u"-shm"_s})
        QFile::remove(copy + ending);
}

bool hasReadableSchema(const QString& path, const sqlite::Database& made) {
    const sqlite::Database file(path, sqlite::Database::Mode::readOnly);
    return readable(file, "SELECT COUNT(*) FROM sqlite_schema").value_or(0) >=
           made.number("SELECT COUNT(*) FROM sqlite_schema");
}

/// Whether no page of the copy contradicts the places that tables and indexes have in the new file, as in one
/// that another program has compacted.
bool fitsLayout(const QString& copy, const sqlite::Database& made) {
    QFile file(copy);
    if (!file.open(QFile::ReadOnly)) return false;
    const sqlite::Statement roots(made, "SELECT rootpage, type='table' FROM sqlite_schema");
    while (roots.step()) {
        const QByteArray tablePages("\5\15");
        const QByteArray indexPages("\2\12");
        char type = 0;
        if (!file.seek((roots.number(0) - 1) * pageSize) || !file.getChar(&type)) continue;
        if ((roots.number(1) != 0 ? indexPages : tablePages).contains(type)) return false;
    }
    return true;
}

}  // namespace

bool salvage::copyWithHeader(const QString& path, const sqlite::Database& made, const QString& copy) {
    if (QFileInfo(path).size() < pageSize) return false;
    files::copy(path, copy);
    QFile source(QString::fromUtf8(sqlite3_db_filename(made.handle(), "main")));
    const QByteArray start = source.open(QFile::ReadOnly) ? source.read(pageSize) : QByteArray();
    if (start.size() != pageSize) outputFile::failWriting(copy);
    putStart(copy, start.first(headerLength));
    foldLog(path, copy);
    putStart(copy, start.first(headerLength));
    // The whole first page holds the schema too.
    if (!hasReadableSchema(copy, made) && fitsLayout(copy, made)) putStart(copy, start);
    return true;
}

void salvage::keepKeys(const sqlite::Database& made, const QString& table, qint64 given) {
    if (given <= 0) return;
    const sqlite::Statement clear(made, "DELETE FROM sqlite_sequence WHERE name=? AND seq<?");
    clear.bind(1, table);
    clear.bind(2, given);
    clear.step();
    const sqlite::Statement keep(made,
                                 "INSERT INTO sqlite_sequence (name, seq) SELECT ?1, ?2 WHERE NOT EXISTS "
                                 "(SELECT * FROM sqlite_sequence WHERE name=?1)");
    keep.bind(1, table);
    keep.bind(2, given);
    keep.step();
}

salvage::Result salvage::copy(const sqlite::Database& damaged, const sqlite::Database& made,
                              const Progress& progress) {
    Result result;
    sqlite::Transaction transaction(made);
    for (const QString& table : tablesOf(made)) {
        const QByteArray name = table.toUtf8();
        const qint64 given = std::clamp<qint64>(
            readable(damaged, "SELECT max(seq) FROM sqlite_sequence WHERE name='" + name + "'").value_or(0),
            0, dataFiles::highestKey);
        if (given == 0) result.unknownKeys += table;
        try {
            TableCopy rows(damaged, made, table);
            // Without it the last page is damaged.
            const std::optional<qint64> last = readable(damaged, "SELECT max(rowid) FROM " + name);
            const qint64 upTo = last ? std::max(given, *last) : dataFiles::highestKey;
            const qint64 read = rows.run(upTo, [&](qint64 key) {
                interruption::check();
                progress(u"Záchrana tabulky "_s + table, std::min(key, upTo), upTo);
            });
            const qint64 end = last ? upTo : given;
            const bool isEndKnown = read == upTo || read < end;
            const qint64 lost =
                rows.lost() + (read == upTo ? 0 : std::max<qint64>(end - std::max<qint64>(read, 0), 1));
            result.copied += rows.copied();
            result.lost += lost;
            result.lines += isEndKnown
                                ? u"Tabulka %1: zachráněno řádků %2, nepřečteno nejvýš %3."_s.arg(
                                      table, QString::number(rows.copied()), QString::number(lost))
                                : u"Tabulka %1: zachráněno řádků %2; kolik jich chybí, nelze zjistit."_s.arg(
                                      table, QString::number(rows.copied()));
        } catch (const sqlite::Failure& failure) {
            if ((failure.resultCode() & 0xFF) != SQLITE_ERROR && !isDamage(failure.resultCode())) throw;
            ++result.lost;
            result.lines += u"Tabulka %1: nelze ji přečíst, její řádky chybějí."_s.arg(table);
        }
        keepKeys(made, table, given);
    }
    transaction.commit();
    return result;
}
