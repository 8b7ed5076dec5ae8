#include "platform/DbValue.h"

#include <QLocale>
#include <cmath>
#include <limits>

#include "platform/dates.h"
#include "platform/errors.h"
#include "platform/text.h"

namespace {

template <typename Wanted, typename Content>
const Wanted& expect(const Content& content) {
    if (std::holds_alternative<std::monostate>(content)) throw RuntimeError(errors::invalidNull);
    const auto* wanted = std::get_if<Wanted>(&content);
    if (wanted == nullptr) throw RuntimeError(errors::typeMismatch);
    return *wanted;
}

}  // namespace

QString DbValue::toText() && {
    if (auto* text = std::get_if<QString>(&content_)) return std::move(*text);
    return std::as_const(*this).toText();
}

QString DbValue::toText() const& {
    if (const auto* text = std::get_if<QString>(&content_)) return *text;
    if (const auto* number = std::get_if<qint64>(&content_)) return QString::number(*number);
    if (const auto* number = std::get_if<double>(&content_)) {
        QLocale locale;
        locale.setNumberOptions(QLocale::OmitGroupSeparator);
        // As the Basic runtime formats them: with an exponent only beyond 15 digits.
        const double size = std::abs(*number);
        const bool plain = size == 0 || (size >= 1e-4 && size < 1e15);
        return locale.toString(*number, plain ? 'f' : 'E', QLocale::FloatingPointShortest);
    }
    return dates::toShown(expect<QDateTime>(content_));
}

qint32 DbValue::toLong() const {
    if (const auto* text = std::get_if<QString>(&content_)) return text::toLong(*text);
    const auto* floating = std::get_if<double>(&content_);
    const double number =
        floating != nullptr ? text::roundToEven(*floating) : static_cast<double>(expect<qint64>(content_));
    if (!(number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<qint32>::max())) {
        throw RuntimeError(errors::overflow);
    }
    return static_cast<qint32>(number);
}

QDateTime DbValue::toDate() const {
    return expect<QDateTime>(content_);
}

QByteArray DbValue::toBytes() const {
    return expect<QByteArray>(content_);
}
