#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

/// Reads records by RFC 4180: fields in double quotes may hold separators, line ends and doubled quotes;
/// records end with CR LF or LF; the last line end may be missing. Lines without anything are skipped.
class CsvReader final {
 public:
    explicit CsvReader(QString text, QChar separator = u',')
        : text_(std::move(text)), separator_(separator) {}

    /// The fields of the next record; nothing at the end.
    /// @throws RuntimeError for a quote that is not closed or stands inside a field without quotes, with the
    ///         line in its description.
    std::optional<QStringList> next();

    /// True when that field, from 0, of the record that `next` gave last stood in quotes.
    bool isQuoted(qsizetype field) const { return quoted_[field]; }

    /// The line, from 1, on which the record that `next` gave last begins.
    qint64 line() const noexcept { return recordLine_; }

 private:
    bool atLineEnd() const;
    void skipLineEnd();
    QString field();
    QString quotedField();
    [[noreturn]] void refuse(const QString& what) const;

    QString text_;
    QChar separator_;
    QList<bool> quoted_;
    qsizetype at_ = 0;
    qint64 line_ = 1;
    qint64 recordLine_ = 0;
};
