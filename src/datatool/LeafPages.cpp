#include "datatool/LeafPages.h"

#include <QFile>
#include <QtEndian>
#include <optional>
#include <set>

#include "datatool/outputFile.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 pageSize = 4096;  // of files that the program has made
constexpr qint64 pagesPerStep = 1000;

/// Reads pages through SQLite's own handle: closing another one would drop this process's locks on the file.
class Pages final {
 public:
    explicit Pages(const sqlite::Database& database) {
        sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file_);
        sqlite3_int64 size = 0;
        if (file_ == nullptr || file_->pMethods == nullptr) return;
        if (file_->pMethods->xFileSize(file_, &size) == SQLITE_OK) count_ = size / pageSize;
    }
    qint64 count() const noexcept { return count_; }
    /// A page, counted from 1; nothing when it cannot be read.
    QByteArray page(qint64 number) const {
        QByteArray bytes(pageSize, '\0');
        if (number < 1 || number > count_) return {};
        const int read =
            file_->pMethods->xRead(file_, bytes.data(), static_cast<int>(pageSize), (number - 1) * pageSize);
        return read == SQLITE_OK ? bytes : QByteArray();
    }

 private:
    sqlite3_file* file_ = nullptr;
    qint64 count_ = 0;
};

/// Takes numbers from a page, and none from behind its end.
class PageReader final {
 public:
    PageReader(const QByteArray& page, qsizetype at) : page_(page), at_(at) {}

    template <typename Number>
    std::optional<Number> fixed() {
        if (at_ + static_cast<qsizetype>(sizeof(Number)) > page_.size()) return std::nullopt;
        const auto number = qFromBigEndian<Number>(page_.constData() + at_);
        at_ += static_cast<qsizetype>(sizeof(Number));
        return number;
    }
    std::optional<qint64> varint() {
        constexpr int longest = 9;
        quint64 number = 0;
        for (int byte = 1; at_ < page_.size(); ++byte) {
            const auto bits = static_cast<quint8>(page_[at_++]);
            if (byte == longest) return static_cast<qint64>(number << 8U | bits);
            number = number << 7U | (bits & 0x7FU);
            if (bits < 0x80U) return static_cast<qint64>(number);
        }
        return std::nullopt;
    }
    qsizetype at() const noexcept { return at_; }

 private:
    const QByteArray& page_;
    qsizetype at_;
};

/// Pages of deleted rows, which keep their content.
std::set<quint32> freePages(const Pages& pages) {
    constexpr qsizetype firstOffset = 32;
    std::set<quint32> free;
    QByteArray trunk = pages.page(1);
    std::optional<quint32> next = PageReader(trunk, firstOffset).fixed<quint32>();
    while (next.value_or(0) != 0 && free.insert(*next).second) {
        trunk = pages.page(*next);
        PageReader reader(trunk, 0);
        next = reader.fixed<quint32>();
        const quint32 leaves = reader.fixed<quint32>().value_or(0);
        for (quint32 leaf = 0; leaf < leaves; ++leaf) {
            const std::optional<quint32> page = reader.fixed<quint32>();
            if (!page) break;
            free.insert(*page);
        }
    }
    return free;
}

constexpr qsizetype countOffset = 3;
constexpr qsizetype rowsOffset = 8;  // of the places of the rows
constexpr qsizetype placeLength = 2;

/// Whether a row of a page has so many columns and no value in the first, where the key stands for it.
bool isRowOf(const QByteArray& page, qsizetype place, qsizetype columns) {
    PageReader row(page, place);
    row.varint();  // the length
    row.varint();  // the key
    const qsizetype record = row.at();
    const qint64 header = row.varint().value_or(0);
    for (qsizetype column = 0; column < columns; ++column) {
        const std::optional<qint64> type = row.varint();
        if (!type || (column == 0 && *type != 0)) return false;
    }
    return row.at() - record == header;
}

/// Any row tells, as another one can be damaged.
bool holdsRowsOf(const QByteArray& page, qsizetype columns) {
    constexpr char tableLeaf = 13;
    if (page.isEmpty() || page[0] != tableLeaf) return false;
    const quint16 count = PageReader(page, countOffset).fixed<quint16>().value_or(0);
    PageReader places(page, rowsOffset);
    for (quint16 row = 0; row < count; ++row) {
        const std::optional<quint16> place = places.fixed<quint16>();
        if (!place) return false;
        if (isRowOf(page, *place, columns)) return true;
    }
    return false;
}

}  // namespace

std::vector<quint32> leafPages::of(const sqlite::Database& database, qsizetype columns,
                                   const std::function<void(qint64 done, qint64 all)>& step) {
    const Pages pages(database);
    const std::set<quint32> free = freePages(pages);
    std::vector<quint32> leaves;
    for (qint64 number = 2; number <= pages.count(); ++number) {
        if (number % pagesPerStep == 0) step(number, pages.count());
        const auto page = static_cast<quint32>(number);
        if (!free.contains(page) && holdsRowsOf(pages.page(number), columns)) leaves.push_back(page);
    }
    return leaves;
}

void leafPages::leaveOutUnfit(const QString& path, const std::vector<quint32>& leaves, qsizetype columns) {
    QFile file(path);
    if (!file.open(QFile::ReadWrite)) outputFile::failWriting(path);
    for (const quint32 leaf : leaves) {
        file.seek((qint64{leaf} - 1) * pageSize);
        QByteArray page = file.read(pageSize);
        const quint16 count = PageReader(page, countOffset).fixed<quint16>().value_or(0);
        QByteArray places;
        for (quint16 row = 0; row < count; ++row) {
            PageReader reader(page, rowsOffset + row * placeLength);
            const std::optional<quint16> place = reader.fixed<quint16>();
            if (place && isRowOf(page, *place, columns))
                places += page.mid(reader.at() - placeLength, placeLength);
        }
        if (places.size() == count * placeLength) continue;
        page.replace(rowsOffset, places.size(), places);
        qToBigEndian(static_cast<quint16>(places.size() / placeLength), page.data() + countOffset);
        file.seek((qint64{leaf} - 1) * pageSize);
        if (file.write(page) != pageSize) outputFile::failWriting(path);
    }
    if (!file.flush()) outputFile::failWriting(path);
}

bool leafPages::leaveOut(const QString& path, quint32 leaf, int row) {
    QFile file(path);
    const qint64 start = (qint64{leaf} - 1) * pageSize;
    if (!file.open(QFile::ReadWrite) || !file.seek(start)) return false;
    QByteArray page = file.read(pageSize);
    const int count = PageReader(page, countOffset).fixed<quint16>().value_or(0);
    const qsizetype place = rowsOffset + row * placeLength;
    if (page.size() != pageSize || row >= count || place + placeLength > pageSize) return false;
    page.remove(place, placeLength);
    page.insert(rowsOffset + (count - 1) * placeLength, placeLength, '\0');
    qToBigEndian(static_cast<quint16>(count - 1), page.data() + countOffset);
    return file.seek(start) && file.write(page) == pageSize && file.flush();
}

void leafPages::showAlone(const sqlite::Database& copy, const QString& table, quint32 page) {
    sqlite3_db_config(copy.handle(), SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    copy.exec("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA writable_schema=ON");
    {
        const sqlite::Statement place(copy,
                                      "UPDATE sqlite_schema SET rootpage=? WHERE type='table' AND name=?");
        place.bind(1, qint64{page});
        place.bind(2, table);
        place.step();
    }
    copy.exec("PRAGMA writable_schema=RESET");
}
