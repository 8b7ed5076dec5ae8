#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// Reads comma-separated records by RFC 4180: fields in double quotes may hold commas, line ends and doubled
/// quotes; records end with CR LF or LF; the last line end may be missing. Lines without anything are
/// skipped.
class CsvReader final {
 public:
    explicit CsvReader(QString text) : text_(std::move(text)) {}

    /// The fields of the next record; nothing at the end.
    /// @throws RuntimeError for a quote that is not closed or stands inside a field without quotes, with the
    ///         line in its description.
    std::optional<QStringList> next();

    /// The line, from 1, on which the record that `next` gave last begins.
    qint64 line() const noexcept { return recordLine_; }

 private:
    bool atLineEnd() const;
    void skipLineEnd();
    QString field();
    QString quotedField();
    [[noreturn]] void refuse(const QString& what) const;

    QString text_;
    qsizetype at_ = 0;
    qint64 line_ = 1;
    qint64 recordLine_ = 0;
};
