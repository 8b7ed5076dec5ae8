#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <variant>

/// A database value: Null, an integer, a floating-point number, a text, a date with time, or bytes.
class DbValue final {
 public:
    DbValue() = default;
    DbValue(qint32 number) : content_(qint64{number}) {}
    DbValue(qint64 number) : content_(number) {}
    DbValue(double number) : content_(number) {}
    DbValue(QString text) : content_(std::move(text)) {}
    DbValue(QDateTime moment) : content_(std::move(moment)) {}
    DbValue(QByteArray bytes) : content_(std::move(bytes)) {}
    /// Otherwise a text literal would convert to a number.
    DbValue(const char* text) = delete;

    bool isNull() const noexcept { return std::holds_alternative<std::monostate>(content_); }

    /// The value as text: numbers in decimal, dates as the user sees them, texts unchanged.
    /// @throws RuntimeError 94 on Null, 13 on bytes.
    QString toText() const&;
    QString toText() &&;

    /// The value as a 32-bit integer, halves rounded to even; texts by text::toLong.
    /// @throws RuntimeError 94 on Null, 13 on dates, bytes and texts that are not numeric, 6 on overflow.
    qint32 toLong() const;

    /// The moment of a date.
    /// @throws RuntimeError 94 on Null, 13 on anything else that is no date.
    QDateTime toDate() const;

    /// The bytes of a binary value.
    /// @throws RuntimeError 94 on Null, 13 on anything else that is not binary.
    QByteArray toBytes() const;

    /// The variant itself, for code that stores it.
    const auto& content() const noexcept { return content_; }

    friend bool operator==(const DbValue&, const DbValue&) = default;

 private:
    std::variant<std::monostate, qint64, double, QString, QDateTime, QByteArray> content_;
};
