#pragma once

#include "datatool/Departments.h"
#include "datatool/TableLayout.h"

/// Writes records of a table into `tDVD`.
class FilmWriter final {
 public:
    FilmWriter(const sqlite::Database& database, const TableLayout& layout);

    /// @return the key of the film.
    /// @throws BadLine for a record that cannot be written.
    qint64 write(const TableRecord& record);

    /// What `write` would store in a text column, "" for Null. A title is that of the original if there is no
    /// other.
    QString text(const FilmColumn& column, const TableRecord& record) const;

    /// The key that the record asks for; 0 for none. @throws BadLine when it cannot be one.
    qint64 key(const TableRecord& record) const;

    /// Names of the departments created.
    const QStringList& madeDepartments() const noexcept { return departments_.made(); }

 private:
    void bind(int parameter, const FilmColumn& column, const TableRecord& record);
    std::optional<qint64> departmentOf(const FilmColumn& column, const TableRecord& record);
    /// The column of the table that a column of `tDVD` is filled from.
    const FilmColumn& source(const FilmColumn& column, const TableRecord& record) const;

    const TableLayout& layout_;
    sqlite::Statement insert_;
    sqlite::Statement number_;
    Departments departments_;
    std::vector<QByteArray> texts_;  // of the record being written
};
