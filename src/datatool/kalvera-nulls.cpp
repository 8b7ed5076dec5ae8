// kalvera-nulls FILE TABLE...: reports what the export of mdbtools loses about the values of tables. A
// program of its own because the library may crash or hang on a damaged file.
//
// It writes records in the format of that export, in the same row order:
//   the last number assigned by the table's autonumber (0 without one);
//   for each row one mark for each column, followed by a quoted text for each mark T;
//   the word "end".
// Marks: N Null; V a value exported correctly; T a text that the export would spoil; D a value whose pages
// are missing or too short.

// First, as mdbtools.h includes it inside extern "C".
#include <glib.h>

#include <mdbtools.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int lastNumberOffset = 20;  // in the first page of a table's definition
constexpr int longValueHeader = 12;
constexpr std::uint32_t storedInline = 0x80000000;
constexpr std::uint32_t storedOnOnePage = 0x40000000;
constexpr std::uint32_t lengthMask = 0x3FFFFFFF;
constexpr int rowOffsets = 14;  // in a page of rows
constexpr int rowStartMask = 0x1FFF;
// The export truncates longer texts (bytes of UTF-8), give or take a few bytes.
constexpr std::size_t longestExported = 199'900;

int fail(const char* what) {
    std::fprintf(stderr, "kalvera-nulls: %s\n", what);
    return 1;
}

std::uint32_t numberAt(const void* bytes, int offset) {
    return static_cast<std::uint32_t>(mdb_get_int32(const_cast<void*>(bytes), offset));
}

/// The old file, mapped. Long values are read here, as the library reloads a page for each of their parts.
class Pages final {
 public:
    explicit Pages(const char* path) {
        const int file = open(path, O_RDONLY | O_CLOEXEC);
        struct stat state {};
        if (file < 0 || fstat(file, &state) != 0) return;
        length_ = static_cast<std::size_t>(state.st_size);
        void* start = mmap(nullptr, length_, PROT_READ, MAP_PRIVATE, file, 0);
        close(file);
        if (start != MAP_FAILED) start_ = static_cast<const char*>(start);
    }
    ~Pages() {
        if (start_ != nullptr) munmap(const_cast<char*>(start_), length_);
    }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    bool areThere() const { return start_ != nullptr; }

    /// A row of a page; the lowest byte of `place` is the row number, the others the page number.
    std::optional<std::string_view> row(std::uint32_t place) const {
        const std::size_t page = std::size_t{place >> 8} * MDB_PGSIZE;
        if (page + MDB_PGSIZE > length_) return std::nullopt;
        const std::size_t offsets = page + rowOffsets + std::size_t{place & 0xFF} * 2;
        const std::size_t begin = wordAt(offsets) & rowStartMask;
        const std::size_t end = (place & 0xFF) == 0 ? MDB_PGSIZE : wordAt(offsets - 2) & rowStartMask;
        if (begin > end || end > MDB_PGSIZE) return std::nullopt;
        return std::string_view(start_ + page + begin, end - begin);
    }

 private:
    std::uint32_t wordAt(std::size_t at) const {
        return static_cast<std::uint8_t>(start_[at]) |
               static_cast<std::uint32_t>(static_cast<std::uint8_t>(start_[at + 1])) << 8;
    }

    const char* start_ = nullptr;
    std::size_t length_ = 0;
};

/// Follows a long value from page to page and appends its bytes to `bytes` unless that is null.
/// @return false if part of it is missing.
bool readLongValue(const Pages& pages, const MdbField& field, std::string* bytes) {
    if (field.siz < longValueHeader) return field.siz == 0;
    const std::uint32_t header = numberAt(field.value, 0);
    const std::uint32_t length = header & lengthMask;
    std::uint32_t place = numberAt(field.value, 4);
    if ((header & storedInline) != 0) {
        const std::string_view inside(static_cast<const char*>(field.value) + longValueHeader,
                                      static_cast<std::size_t>(field.siz - longValueHeader));
        if (bytes != nullptr) *bytes = inside;
        return inside.size() == length;
    }
    if ((header & storedOnOnePage) != 0) {
        const auto whole = pages.row(place);
        if (whole && bytes != nullptr) *bytes = *whole;
        return whole && whole->size() == length;
    }
    std::size_t found = 0;
    while (place != 0 && found < length) {
        const auto part = pages.row(place);
        if (!part || part->size() <= 4) return false;
        found += part->size() - 4;
        if (bytes != nullptr) *bytes += part->substr(4);
        place = numberAt(part->data(), 0);
    }
    return place == 0 && found == length;
}

/// Passes the UTF-16 units of a stored text to `take`. A text that begins with FF FE is compressed: single
/// bytes stand for units below 256, and a zero byte switches to whole units and back.
template <typename Take>
void forEachUnit(std::string_view stored, Take take) {
    const bool compressed = stored.starts_with("\xFF\xFE");
    bool single = compressed;
    for (std::size_t at = compressed ? 2 : 0; at < stored.size();) {
        const auto low = static_cast<std::uint8_t>(stored[at]);
        if (compressed && low == 0) {
            single = !single;
            ++at;
        } else if (single) {
            take(std::uint16_t{low});
            ++at;
        } else {
            if (at + 1 == stored.size()) break;
            take(static_cast<std::uint16_t>(low | static_cast<std::uint8_t>(stored[at + 1]) << 8));
            at += 2;
        }
    }
}

bool isHigh(std::uint32_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool isLow(std::uint32_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

/// True if the export would not reproduce the text.
bool isSpoilt(std::string_view stored) {
    bool isLost = false;
    std::size_t length = 0;  // in UTF-8
    forEachUnit(stored, [&](std::uint16_t unit) {
        isLost |= unit == 0 || (unit & 0xF800) == 0xD800;
        length += 1U + (unit >= 0x80 ? 1U : 0U) + (unit >= 0x800 ? 1U : 0U);
    });
    return isLost || length >= longestExported;
}

void appendUtf8(std::string& text, std::uint32_t character) {
    const auto put = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    const auto follow = [&](int shift) { put(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        follow(0);
    } else if (character < 0x10000) {
        put(0xE0 | character >> 12);
        follow(6);
        follow(0);
    } else {
        put(0xF0 | character >> 18);
        follow(12);
        follow(6);
        follow(0);
    }
}

/// Quoted, with quotes doubled. An unpaired surrogate becomes U+FFFD.
std::string quoted(std::string_view stored) {
    std::vector<std::uint16_t> units;
    forEachUnit(stored, [&units](std::uint16_t unit) { units.push_back(unit); });
    std::string text = "\"";
    for (std::size_t at = 0; at < units.size(); ++at) {
        std::uint32_t character = units[at];
        if (isHigh(character) && at + 1 < units.size() && isLow(units[at + 1])) {
            character = 0x10000 + ((character & 0x3FF) << 10) + (units[++at] & 0x3FFU);
        } else if (isHigh(character) || isLow(character)) {
            character = 0xFFFD;
        }
        if (character == '"') text += '"';
        appendUtf8(text, character);
    }
    return text + '"';
}

class Marker final {
 public:
    explicit Marker(const Pages& pages) : pages_(pages) {}

    /// The record of one row.
    const std::string& record(const MdbTableDef& table, const std::vector<MdbField>& fields) {
        record_.clear();
        texts_.clear();
        for (std::size_t at = 0; at < fields.size(); ++at) {
            const auto* column = static_cast<const MdbColumn*>(g_ptr_array_index(table.columns, at));
            record_ += mark(*column, fields[at]);
        }
        return record_ += texts_ += '\n';
    }

 private:
    char mark(const MdbColumn& column, const MdbField& field) {
        if (field.is_null != 0) return 'N';
        if (column.col_type == MDB_OLE) return readLongValue(pages_, field, nullptr) ? 'V' : 'D';
        if (column.col_type != MDB_TEXT && column.col_type != MDB_MEMO) return 'V';
        bytes_.clear();
        if (column.col_type == MDB_MEMO) {
            if (!readLongValue(pages_, field, &bytes_)) return 'D';
        } else if (field.siz > 0) {
            bytes_.assign(static_cast<const char*>(field.value), static_cast<std::size_t>(field.siz));
        }
        if (!isSpoilt(bytes_)) return 'V';
        texts_ += ',' + quoted(bytes_);
        return 'T';
    }

    const Pages& pages_;
    std::string record_;
    std::string texts_;
    std::string bytes_;
};

int tell(const Pages& pages, MdbHandle* file, MdbTableDef* table) {
    if (mdb_read_pg(file, table->entry->table_pg) != file->fmt->pg_size) return fail("no table definition");
    std::printf("%d\n", static_cast<std::int32_t>(numberAt(file->pg_buf, lastNumberOffset)));
    if (mdb_read_columns(table) == nullptr) return fail("no columns");
    mdb_rewind_table(table);
    std::vector<MdbField> fields(table->num_cols);
    Marker marker(pages);
    while (mdb_fetch_row(table) != 0) {
        int start = 0;
        std::size_t length = 0;
        if (mdb_find_row(file, static_cast<int>(table->cur_row) - 1, &start, &length) != 0 ||
            mdb_crack_row(table, start & rowStartMask, length, fields.data()) < 0) {
            return fail("unreadable row");
        }
        const std::string& record = marker.record(*table, fields);
        std::fwrite(record.data(), 1, record.size(), stdout);
    }
    std::puts("end");
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return fail("usage: kalvera-nulls FILE TABLE...");
    const Pages pages(argv[1]);
    MdbHandle* file = mdb_open(argv[1], MDB_NOFLAGS);
    if (file == nullptr || !pages.areThere()) return fail("cannot open the file");
    int result = 0;
    for (int at = 2; at < argc && result == 0; ++at) {
        MdbTableDef* table = mdb_read_table_by_name(file, argv[at], MDB_TABLE);
        result = table == nullptr ? fail("no such table") : tell(pages, file, table);
        if (table != nullptr) mdb_free_tabledef(table);
    }
    mdb_close(file);
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0 ? result : fail("cannot write");
}
