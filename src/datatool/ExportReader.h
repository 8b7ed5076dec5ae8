#pragma once

#include <QByteArrayList>
#include <functional>

/// Reads records as mdb-export writes them: fields separated by commas, bare or quoted with doubled quotes,
/// each record ended by a line feed. Quoted fields may contain any bytes. Only one record is in memory at a
/// time.
class ExportReader final {
 public:
    /// Replaces the bytes by the next ones; false at the end.
    using Source = std::function<bool(QByteArray&)>;

    explicit ExportReader(Source source) : source_(std::move(source)) {}

    /// Replaces `fields` by those of the next record; false at the end.
    /// @throws RuntimeError when the output is truncated or malformed, and what the source throws.
    bool next(QByteArrayList& fields);

 private:
    /// The next byte, not consumed; -1 at the end.
    int peek();
    void readField(QByteArray& field);
    void readQuoted(QByteArray& field);

    Source source_;
    QByteArray buffer_;
    qsizetype at_ = 0;
};
