#pragma once

#include <QByteArrayList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "datatool/ChildProgram.h"
#include "datatool/ExportReader.h"

/// The place of a name of a table or column, from 0, whatever its letter case; -1 when it is not there.
qsizetype placeOf(QStringView name, const QStringList& names);

/// The programs that read old database files, with what each call of them may use up.
struct OldPrograms {
    QString tables;  // mdb-tables
    QString count;   // mdb-count
    QString rows;    // mdb-export
    QString nulls;   // our own kalvera-nulls
    ProgramLimits limits;

    /// Looks for those of mdbtools where the system looks for programs, and for our own beside this one.
    /// @throws RuntimeError when one is missing, with its name.
    static OldPrograms find();
};

/// The output of a program in records.
struct ProgramRecords {
    ChildProgram program;
    ExportReader reader;

    ProgramRecords(const QString& path, const QStringList& arguments, const ProgramLimits& limits)
        : program(path, arguments, limits),
          reader([this](QByteArray& bytes) { return program.read(bytes); }) {}
};

/// One old database file (Jet 4), which is only read.
class OldFile final {
 public:
    /// @throws RuntimeError when it is missing, no such file or of another version.
    OldFile(const QString& path, const OldPrograms& programs);

    /// To be called before its tables are read, which has to be done in the order of `tables`, whatever the
    /// letter case of their names.
    /// @throws RuntimeError when the file is damaged beyond reading or lacks one of the tables.
    void begin(const QStringList& tables);

    const QString& path() const noexcept { return path_; }
    /// Tables that it has beside those to be read, in its own spelling.
    const QStringList& otherTables() const noexcept { return otherTables_; }

 private:
    friend class OldTable;
    void checkHeader() const;

    QString path_;
    OldPrograms programs_;
    QStringList tables_;  // those still to be read, in the file's own spelling
    QStringList otherTables_;
    std::unique_ptr<ChildProgram> lister_;
    std::unique_ptr<ProgramRecords> marks_;
};

/// The rows of the next table of an old file, one after the other in the order in which the file holds them.
/// The programs that read it begin at once, so that several tables can be under way; they are read one after
/// the other.
class OldTable final {
 public:
    explicit OldTable(OldFile& file);

    /// Waits for what is told before the first row; to be called before anything else.
    /// @throws RuntimeError when the file turns out to be damaged or a program fails.
    void begin();

    /// Its columns in the file's own spelling and order.
    const QStringList& columns() const noexcept { return columns_; }
    /// The number of rows that the file itself tells, independent of those read.
    qint64 count() const noexcept { return count_; }
    /// The highest number that its autonumber has ever given out; 0 when there is none.
    qint64 lastNumber() const noexcept { return lastNumber_; }

    /// Moves to the next row; false behind the last one.
    /// @throws RuntimeError when the file turns out to be damaged or a program fails.
    bool next();
    /// A value of the row in UTF-8 or, for binary columns, as it stands; nothing for Null.
    /// @param column counts from 0.
    std::optional<QByteArrayView> value(qsizetype column) const;
    /// True when a part of the value is missing in the file.
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
