#pragma once

#include <QByteArrayList>
#include <functional>

/// Reads the records that mdb-export writes: fields separated by commas, bare or in quotes with quotes
/// doubled, each record ended by a line feed. Fields in quotes may hold any bytes. Only one record is in
/// memory at a time.
class ExportReader final {
 public:
    /// Puts the next bytes in place of those it is given; false at the end.
    using Source = std::function<bool(QByteArray&)>;

    explicit ExportReader(Source source) : source_(std::move(source)) {}

    /// Puts the fields of the next record in place of those in `fields`; false at the end.
    /// @throws RuntimeError when the output breaks off or has another form; failures of the source.
    bool next(QByteArrayList& fields);

 private:
    /// The next byte, which stays the next; -1 at the end.
    int peek();
    void readField(QByteArray& field);
    void readQuoted(QByteArray& field);

    Source source_;
    QByteArray buffer_;
    qsizetype at_ = 0;
};
