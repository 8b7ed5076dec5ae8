#include "datatool/Salvage.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtEndian>
#include <algorithm>
#include <functional>
#include <optional>

#include "core/pairReplacement.h"
#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/LeafPages.h"
#include "datatool/TableColumns.h"
#include "datatool/outputFile.h"
#include "platform/ado.h"
#include "platform/files.h"
#include "platform/index.h"

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

QByteArray quoted(const QString& name) {
    return '"' + name.toUtf8().replace('"', "\"\"") + '"';
}

/// Whether the engine finds nothing wrong with a table, or "" the whole file.
bool isSound(const sqlite::Database& damaged, const QString& table) {
    try {
        const sqlite::Statement check(
            damaged,
            "PRAGMA main.quick_check" + (table.isEmpty() ? QByteArray() : '(' + quoted(table) + ')'));
        return check.step() && check.text(0) == u"ok"_s;
    } catch (const sqlite::Failure&) {
        return false;
    }
}

/// Which column of the damaged file goes into which of the new one.
struct Columns {
    QByteArrayList from;
    QByteArrayList to;
    QStringList missing;  // of the new one
};

/// The key is the one of the row, as all tables begin with it. A column whose name is damaged keeps its
/// place.
Columns columnsOfBoth(const sqlite::Database& made, const sqlite::Database& damaged, const QString& table) {
    QStringList names;
    QStringList present;
    for (const TableColumn& column : columnsOf(made, table))
        names += column.name;
    for (const TableColumn& column : columnsOf(damaged, table))
        present += column.name;
    Columns columns{{"rowid"}, {names.first().toUtf8()}, {}};
    for (qsizetype at = 1; at < names.size(); ++at) {
        const QString& name = names[at];
        const bool isRenamed =
            present.size() == names.size() && !names.contains(present[at], Qt::CaseInsensitive);
        if (present.contains(name, Qt::CaseInsensitive)) {
            columns.from += quoted(name);
        } else if (isRenamed) {
            columns.from += quoted(present[at]);
        } else {
            columns.missing += name;
            continue;
        }
        columns.to += name.toUtf8();
    }
    return columns;
}

/// One table on its way.
class TableCopy final {
 public:
    TableCopy(const sqlite::Database& damaged, const sqlite::Database& made, const QString& table)
        : damaged_(damaged),
          table_(table),
          width_(countOf(columnsOf(made, table))),
          columns_(columnsOfBoth(made, damaged, table)),
          rows_(damaged, "SELECT " + columns_.from.join(',') + " FROM " + table.toUtf8() +
                             " NOT INDEXED WHERE rowid>? AND rowid<=? ORDER BY rowid"),
          known_(made, "SELECT COUNT(*) FROM " + table.toUtf8() + " WHERE rowid=?"),
          insert_(made, ado::insertSql(table.toUtf8(), columns_.to)) {}

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

    /// Counts keys of which it is known that they have not been read.
    void lose(qint64 keys) { lost_ += keys; }

    /// Copies the rows that are not there yet of all leaf pages that can be read.
    void runLeaves(const std::function<void(qint64 done, qint64 all)>& step) {
        const std::vector<quint32> leaves = leafPages::of(damaged_, width_, step);
        if (leaves.empty()) return;
        canRepeat_ = true;
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"leaves.ddb"_s);
        if (!folder.isValid()) outputFile::failWriting(folder.path());
        std::optional<sqlite::Database> copy(std::in_place, path, sqlite::Database::Mode::create);
        damaged_.copyInto(*copy, [](qint64, qint64) { interruption::check(); });
        copy.reset();
        leafPages::leaveOutUnfit(path, leaves, width_);
        copy.emplace(path, sqlite::Database::Mode::readWrite);
        for (const quint32 leaf : leaves) {
            interruption::check();
            leafPages::showAlone(*copy, table_, leaf);
            std::optional<int> unreadable = copyLeaf(*copy);
            while (unreadable) {
                copy.reset();
                const bool isLess = leafPages::leaveOut(path, leaf, *unreadable);
                copy.emplace(path, sqlite::Database::Mode::readWrite);
                if (!isLess) break;
                leafPages::showAlone(*copy, table_, leaf);
                unreadable = copyLeaf(*copy);
            }
        }
    }

    const QStringList& missingColumns() const noexcept { return columns_.missing; }
    qint64 copied() const noexcept { return copied_; }
    qint64 lost() const noexcept { return lost_; }

 private:
    bool isKnown(qint64 key) const {
        known_.bind(1, key);
        known_.step();
        const bool isKnown = known_.number(0) != 0;
        known_.reset();
        return isKnown;
    }

    /// Copies the rows of the leaf page that `copy` shows alone.
    /// @return the first that cannot be read, from 0; nothing when all can.
    std::optional<int> copyLeaf(const sqlite::Database& copy) {
        const sqlite::Statement rows(
            copy, "SELECT " + columns_.from.join(',') + " FROM " + table_.toUtf8() + " NOT INDEXED");
        int read = 0;
        int result = SQLITE_OK;
        while ((result = sqlite3_step(rows.handle())) == SQLITE_ROW) {
            insertNew(rows);
            ++read;
        }
        return result == SQLITE_DONE ? std::nullopt : std::optional(read);
    }

    void insertNew(const sqlite::Statement& row) {
        const qint64 key = row.number(0);
        if (key > dataFiles::highestKey || (canRepeat_ && isKnown(key))) return;
        insert(row);
        ++copied_;
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
            insertNew(rows_);
            read = key;
            if (++read_ % rowsPerCheck == 0) step(key);
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

    void insert(const sqlite::Statement& row) const {
        for (int column = 0; column < static_cast<int>(columns_.to.size()); ++column)
            sqlite3_bind_value(insert_.handle(), column + 1, sqlite3_column_value(row.handle(), column));
        insert_.step();
        insert_.reset();
    }

    const sqlite::Database& damaged_;
    QString table_;
    qsizetype width_;  // columns of a row in the file
    Columns columns_;
    sqlite::Statement rows_;
    sqlite::Statement known_;
    sqlite::Statement insert_;
    bool canRepeat_ = false;  // a row may be there already
    qint64 read_ = 0;
    qint64 copied_ = 0;
    qint64 lost_ = 0;
};

/// Copies what the tree of a table leads to.
/// @param given the highest key that the table has given out; 0 when that is not known.
/// @return whether it is known how many keys are left out.
bool copyTree(const sqlite::Database& damaged, TableCopy& rows, const QString& table, qint64 given,
              const Progress& progress) {
    // Without it the last page is damaged.
    const std::optional<qint64> last = readable(damaged, "SELECT max(rowid) FROM " + table.toUtf8());
    const qint64 upTo = last ? std::max(given, *last) : dataFiles::highestKey;
    const qint64 read = std::max<qint64>(0, rows.run(upTo, [&](qint64 key) {
        interruption::check();
        progress(u"Záchrana tabulky "_s + table, std::min(key, upTo), upTo);
    }));
    const qint64 end = last ? upTo : given;
    if (read != upTo) rows.lose(std::max<qint64>(end - read, 1));
    return read == upTo || read < end;
}

/// @param given the highest key that the table has given out; 0 when that is not known.
void copyTable(const sqlite::Database& damaged, const sqlite::Database& made, const QString& table,
               qint64 given, salvage::Trust trust, const Progress& progress, salvage::Result& result) {
    TableCopy rows(damaged, made, table);
    bool isCountKnown = trust == salvage::Trust::all;
    if (trust != salvage::Trust::all) {
        // A damaged tree can lead to wrong rows and past right ones; the pages of the rows come first.
        try {
            rows.runLeaves([&](qint64 done, qint64 all) {
                interruption::check();
                progress(u"Hledání řádků tabulky "_s + table, done, all);
            });
        } catch (const sqlite::Failure& failure) {
            // What has been copied until then counts.
            if (!isDamage(failure.resultCode())) throw;
        }
    }
    if (trust != salvage::Trust::leaves)
        isCountKnown = copyTree(damaged, rows, table, given, progress) && isCountKnown;
    result.copied += rows.copied();
    result.lost += isCountKnown ? rows.lost() : std::max<qint64>(rows.lost(), 1);
    result.lines += isCountKnown ? u"Tabulka %1: zachráněno řádků %2, nepřečteno nejvýš %3."_s.arg(
                                       table, QString::number(rows.copied()), QString::number(rows.lost()))
                                 : u"Tabulka %1: zachráněno řádků %2; kolik jich chybí, nelze zjistit."_s.arg(
                                       table, QString::number(rows.copied()));
    if (rows.missingColumns().isEmpty()) return;
    ++result.lost;
    result.lines += u"Tabulka %1: chybějí sloupce %2, jejich hodnoty nelze přečíst."_s.arg(
        table, rows.missingColumns().join(u", "_s));
}

/// The tables whose trees cannot be trusted.
QStringList damagedTables(const sqlite::Database& damaged, const QStringList& tables) {
    if (isSound(damaged, {})) return {};
    QStringList unsound;
    for (const QString& table : tables) {
        if (!isSound(damaged, table)) unsound += table;
    }
    // Two tables can share a page, of which each by itself knows nothing.
    return unsound.isEmpty() && isSound(damaged, u"sqlite_sequence"_s) ? tables : unsound;
}

// The file format of SQLite 3, "The Database Header" and "B-tree Pages".
constexpr qsizetype headerLength = 100;
constexpr qint64 pageSize = 4096;  // of files that the program has made

/// Puts the first bytes of the new file over those of the copy. The size counts because the number of changes
/// that a new file has stands twice in its header.
void putStart(const QString& copy, QByteArray start) {
    constexpr qint64 sizeOffset = 28;
    constexpr qint64 freeOffset = 32;
    constexpr qint64 freeLength = 8;
    QFile file(copy);
    if (!file.open(QFile::ReadWrite)) outputFile::failWriting(copy);
    // Rows of free pages are deleted ones.
    const QByteArray former = file.read(headerLength);
    if (former.startsWith("SQLite format 3"))
        start.replace(freeOffset, freeLength, former.mid(freeOffset, freeLength));
    file.seek(0);
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

salvage::Trust salvage::copyWithHeader(const QString& path, const sqlite::Database& made,
                                       const QString& copy) {
    if (QFileInfo(path).size() < pageSize) return Trust::nothing;
    files::copy(path, copy);
    QFile source(QString::fromUtf8(sqlite3_db_filename(made.handle(), "main")));
    const QByteArray start = source.open(QFile::ReadOnly) ? source.read(pageSize) : QByteArray();
    if (start.size() != pageSize) outputFile::failWriting(copy);
    putStart(copy, start.first(headerLength));
    foldLog(path, copy);
    putStart(copy, start.first(headerLength));
    if (hasReadableSchema(copy, made)) return Trust::all;
    // The whole first page holds the schema too. Elsewhere than in the new file, tables are found by their
    // rows.
    const bool fits = fitsLayout(copy, made);
    putStart(copy, start);
    return fits ? Trust::all : Trust::leaves;
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

salvage::Result salvage::copy(const sqlite::Database& damaged, const sqlite::Database& made, Trust most,
                              const Progress& progress) {
    Result result;
    const QStringList tables = tablesOf(made);
    const QStringList unsound = damagedTables(damaged, tables);
    sqlite::Transaction transaction(made);
    for (const QString& table : tables) {
        const QByteArray name = table.toUtf8();
        const qint64 given = std::clamp<qint64>(
            readable(damaged, "SELECT max(seq) FROM sqlite_sequence WHERE name='" + name + "'").value_or(0),
            0, dataFiles::highestKey);
        if (given == 0) result.unknownKeys += table;
        const Trust trust = most == Trust::all && unsound.contains(table) ? Trust::leavesFirst : most;
        try {
            copyTable(damaged, made, table, given, trust, progress, result);
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
