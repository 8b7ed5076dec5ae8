#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

/// Reads records by RFC 4180: fields in double quotes may contain separators, line breaks and doubled quotes;
/// records end with CR LF or LF, the last one optionally. Empty lines are skipped.
class CsvReader final {
 public:
    explicit CsvReader(QString text, QChar separator = u',')
        : text_(std::move(text)), separator_(separator) {}

    /// The fields of the next record; nothing at the end.
    /// @throws RuntimeError for an unclosed quote and for a quote inside an unquoted field; its description
    ///         names the line.
    std::optional<QStringList> next();

    /// True if that field (from 0) of the record read last was quoted.
    bool isQuoted(qsizetype field) const { return quoted_[field]; }

    /// How much of the text has been read, in characters.
    qsizetype position() const noexcept { return at_; }

    /// The line (from 1) on which the record read last begins.
    qint64 line() const noexcept { return recordLine_; }

 private:
    bool atLineEnd() const;
    void skipLineEnd();
    QString field();
    QString quotedField();
    [[noreturn]] void refuse(const QString& what) const;

    const QString text_;
    QChar separator_;
    QList<bool> quoted_;
    qsizetype at_ = 0;
    qint64 line_ = 1;
    qint64 recordLine_ = 0;
};
