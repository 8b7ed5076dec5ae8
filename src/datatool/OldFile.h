#pragma once

#include <QByteArrayList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "datatool/ChildProgram.h"
#include "datatool/ExportReader.h"

/// Index of a table or column name, ignoring case; -1 if missing.
qsizetype placeOf(QStringView name, const QStringList& names);

/// The programs that read old database files, and the limits of each run.
struct OldPrograms {
    QString tables;  // mdb-tables
    QString count;   // mdb-count
    QString rows;    // mdb-export
    QString nulls;   // our own kalvera-nulls
    ProgramLimits limits;

    /// Finds those of mdbtools in the search path and our own beside this program or, when installed, in the
    /// package's library folder.
    /// @throws RuntimeError naming the program that is missing.
    static OldPrograms find();
};

/// The output of a program as records.
struct ProgramRecords {
    ChildProgram program;
    ExportReader reader;

    ProgramRecords(const QString& path, const QStringList& arguments, const ProgramLimits& limits)
        : program(path, arguments, limits),
          reader([this](QByteArray& bytes) { return program.read(bytes); }) {}
};

/// An old database file (Jet 4), only read.
class OldFile final {
 public:
    /// @throws RuntimeError when it is missing, not a database or of another version.
    OldFile(const QString& path, const OldPrograms& programs);

    /// Call before its tables are read, which must happen in the order of `tables` (names in any case).
    /// @throws RuntimeError when the file is unreadable or lacks one of the tables.
    void begin(const QStringList& tables);

    const QString& path() const noexcept { return path_; }
    /// Its tables that are not to be read, in its own spelling.
    const QStringList& otherTables() const noexcept { return otherTables_; }

 private:
    friend class OldTable;
    void checkHeader() const;

    QString path_;
    OldPrograms programs_;
    QStringList tables_;  // still to be read, in the file's own spelling
    QStringList otherTables_;
    std::unique_ptr<ChildProgram> lister_;
    std::unique_ptr<ProgramRecords> marks_;
};

/// The rows of the next table of an old file, in file order. The programs that read it start at once, so that
/// several tables can be under way; the tables themselves are read one after the other.
class OldTable final {
 public:
    explicit OldTable(OldFile& file);

    /// Waits for what precedes the first row; call before anything else.
    /// @throws RuntimeError when the file is damaged or a program fails.
    void begin();

    /// Its columns in the file's own spelling and order.
    const QStringList& columns() const noexcept { return columns_; }
    /// The number of rows according to the file itself, independent of those read.
    qint64 count() const noexcept { return count_; }
    /// The highest number its autonumber has ever assigned; 0 without one.
    qint64 lastNumber() const noexcept { return lastNumber_; }

    /// Moves to the next row; false after the last one.
    /// @throws RuntimeError when the file is damaged or a program fails.
    bool next();
    /// A value of the row, in UTF-8 or, for binary columns, as stored; nothing for Null.
    /// @param column counts from 0.
    std::optional<QByteArrayView> value(qsizetype column) const;
    /// True if part of the value is missing in the file.
    bool isDamaged(qsizetype column) const { return marks()[column] == 'D'; }

 private:
    const QByteArray& marks() const { return markFields_.front(); }
    static void check(bool matches);

    QString what_;
    ExportReader& marks_;
    std::unique_ptr<ProgramRecords> rows_;
    std::unique_ptr<ChildProgram> counter_;
    QByteArrayList fields_;
    QByteArrayList markFields_;
    QStringList columns_;
    bool isLast_;
    qint64 lastNumber_ = 0;
    qint64 count_ = 0;
};
