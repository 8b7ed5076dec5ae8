#include "datatool/Salvage.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

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

/// A number of the damaged file; 0 when it cannot be read.
qint64 readable(const sqlite::Database& damaged, const QByteArray& sql) {
    try {
        return damaged.number(sql.constData());
    } catch (const RuntimeError&) {
        return 0;
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

    /// @param step is told from time to time up to which key all is done.
    void run(qint64 highest, const std::function<void(qint64 key)>& step) {
        std::vector<std::pair<qint64, qint64>> ranges{{-1, highest}};
        while (!ranges.empty()) {
            const auto [above, upTo] = ranges.back();
            ranges.pop_back();
            step(above);
            const qint64 read = copyRange(above, upTo, step);
            if (read == upTo) continue;
            if (upTo - read == 1) {
                ++lost_;
                continue;
            }
            const qint64 middle = read + (upTo - read) / 2;
            ranges.emplace_back(middle, upTo);
            ranges.emplace_back(read, middle);
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

}  // namespace

bool salvage::copyWithHeader(const QString& path, const sqlite::Database& made, const QString& copy) {
    // The file format of SQLite 3, "The Database Header". The size counts because the number of changes that
    // a new file has stands twice in its header; its list of free pages is empty.
    constexpr qint64 headerLength = 100;
    constexpr qint64 pageSize = 4096;  // of files that the program has made
    constexpr qint64 sizeOffset = 28;
    if (QFileInfo(path).size() < pageSize) return false;
    files::copy(path, copy);
    QFile file(copy);
    QFile source(QString::fromUtf8(sqlite3_db_filename(made.handle(), "main")));
    QByteArray header = source.open(QFile::ReadOnly) ? source.read(headerLength) : QByteArray();
    if (header.size() != headerLength || !file.open(QFile::ReadWrite)) outputFile::failWriting(copy);
    qToBigEndian(static_cast<quint32>(file.size() / pageSize), header.data() + sizeOffset);
    if (file.write(header) != headerLength || !file.flush()) outputFile::failWriting(copy);
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
        const qint64 given =
            std::clamp<qint64>(readable(damaged, "SELECT seq FROM sqlite_sequence WHERE name='" + name + "'"),
                               0, dataFiles::highestKey);
        try {
            TableCopy rows(damaged, made, table);
            const qint64 highest = std::max(given, readable(damaged, "SELECT max(rowid) FROM " + name));
            rows.run(highest, [&](qint64 key) {
                interruption::check();
                progress(u"Záchrana tabulky "_s + table, key, highest);
            });
            result.copied += rows.copied();
            result.lost += rows.lost();
            result.lines += u"Tabulka %1: zachráněno řádků %2, nepřečteno nejvýš %3."_s.arg(
                table, QString::number(rows.copied()), QString::number(rows.lost()));
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
