#include "platform/text.h"

#include <QLocale>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/errors.h"

namespace {

constexpr QChar blank(u' ');
constexpr char16_t plainLetters = 0x80;

/// True for languages with case rules of their own. For all others the plain conversion gives the same result
/// much faster, which matters when searching a long list.
bool hasLettersOfItsOwn(const QLocale& locale) {
    switch (locale.language()) {
        case QLocale::Turkish:
        case QLocale::Azerbaijani:
        case QLocale::Lithuanian:
        case QLocale::Greek:
            return true;
        default:
            return false;
    }
}

template <typename Convert>
QString letterByLetter(QStringView text, Convert&& convert) {
    QString whole = convert(text.toString());
    if (whole.size() == text.size()) return whole;
    // Some letter changed its length: convert letter by letter and keep those that do. ASCII runs, which
    // never do, are converted at once, since web pages are long.
    QString result;
    result.reserve(text.size());
    for (qsizetype at = 0; at < text.size();) {
        qsizetype length = 0;
        while (at + length < text.size() && text[at + length].unicode() < plainLetters)
            ++length;
        if (length == 0) {
            const bool pair = text[at].isHighSurrogate() && at + 1 < text.size();
            length = pair && text[at + 1].isLowSurrogate() ? 2 : 1;
        }
        const QString part = text.mid(at, length).toString();
        const QString changed = convert(part);
        result += changed.size() == length ? changed : part;
        at += length;
    }
    return result;
}

/// Parses a number in the C locale. QString rather than QByteArray, which turns an overflow into 0 instead of
/// infinity.
double toDouble(const QByteArray& number) {
    return QString::fromLatin1(number).toDouble();
}

/// The number in C locale form; empty if the text is not numeric.
QByteArray plainNumber(QStringView text) {
    const QString decimal = QLocale().decimalPoint();
    const QString trimmed = text::trim(text);
    QByteArray plain;
    bool digits = false;
    bool point = false;
    for (qsizetype at = 0; at < trimmed.size(); ++at) {
        const QChar c = trimmed[at];
        if (c >= u'0' && c <= u'9') {
            digits = true;
            plain += c.toLatin1();
        } else if (at == 0 && (c == u'+' || c == u'-')) {
            plain += c.toLatin1();
        } else if (!point && QStringView(trimmed).mid(at).startsWith(decimal)) {
            point = true;
            plain += '.';
            at += decimal.size() - 1;
        } else {
            return {};
        }
    }
    return digits ? plain : QByteArray();
}

}  // namespace

QString text::trim(QStringView text) {
    qsizetype first = 0;
    qsizetype end = text.size();
    while (first < end && text[first] == blank)
        ++first;
    while (end > first && text[end - 1] == blank)
        --end;
    return text.mid(first, end - first).toString();
}

QString text::upperCase(QStringView text) {
    if (!hasLettersOfItsOwn(QLocale()))
        return letterByLetter(text, [](QString part) { return std::move(part).toUpper(); });
    return letterByLetter(text, [locale = QLocale()](const QString& part) { return locale.toUpper(part); });
}

QString text::lowerCase(QStringView text) {
    if (!hasLettersOfItsOwn(QLocale()))
        return letterByLetter(text, [](QString part) { return std::move(part).toLower(); });
    return letterByLetter(text, [locale = QLocale()](const QString& part) { return locale.toLower(part); });
}

qsizetype text::inStr(QStringView text, QStringView needle, qsizetype start) {
    if (start < 1) throw RuntimeError(errors::invalidCall);
    if (start > text.size()) return 0;
    return text.indexOf(needle, start - 1) + 1;
}

qsizetype text::inStrIgnoringCase(QStringView text, QStringView needle, qsizetype start) {
    return inStr(upperCase(text), upperCase(needle), start);
}

QString text::mid(QStringView text, qsizetype start) {
    return mid(text, start, text.size());
}

QString text::mid(QStringView text, qsizetype start, qsizetype length) {
    if (start < 1 || length < 0) throw RuntimeError(errors::invalidCall);
    if (start > text.size()) return {};
    return text.mid(start - 1, std::min(length, text.size() - start + 1)).toString();
}

QString text::cut(const QString& text, qsizetype length) {
    QString first = text.left(length);
    if (first.size() < text.size() && !first.isEmpty() && first.back().isHighSurrogate()) first.chop(1);
    return first;
}

QString text::wholeLetters(QStringView text) {
    QString whole;
    whole.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool pair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (pair || !text[at].isSurrogate()) whole += text[at];
        if (pair) whole += text[++at];
    }
    return whole;
}

QString text::fromFirst(QStringView text, QStringView marker) {
    return mid(text, inStr(text, marker));
}

QStringList text::split(const QString& text, QChar separator) {
    return text.isEmpty() ? QStringList() : text.split(separator);
}

bool text::isNumeric(QStringView text) {
    return !plainNumber(text).isEmpty();
}

double text::Val(QStringView text) {
    QByteArray number;
    bool digits = false;
    bool point = false;
    bool exponent = false;
    for (const QChar c : text) {
        if (c == u' ' || c == u'\t' || c == u'\n' || c == u'\r') continue;
        const bool afterExponent = !number.isEmpty() && number.back() == 'e';
        if (c >= u'0' && c <= u'9') {
            digits = digits || !exponent;
        } else if ((c == u'+' || c == u'-') && (number.isEmpty() || afterExponent)) {
        } else if (c == u'.' && !point && !exponent) {
            point = true;
        } else if ((c == u'e' || c == u'E' || c == u'd' || c == u'D') && digits && !exponent) {
            exponent = true;
            number += 'e';
            continue;
        } else {
            break;
        }
        number += c.toLatin1();
    }
    if (!digits) return 0;
    while (!number.isEmpty() && (number.back() == 'e' || number.back() == '+' || number.back() == '-')) {
        number.chop(1);
    }
    return toDouble(number);
}

double text::toNumber(QStringView text) {
    const QByteArray plain = plainNumber(text);
    if (plain.isEmpty()) throw RuntimeError(errors::typeMismatch);
    return toDouble(plain);
}

qint32 text::toLong(QStringView text) {
    const double number = roundToEven(toNumber(text));
    if (!(number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<qint32>::max())) {
        throw RuntimeError(errors::overflow);
    }
    return static_cast<qint32>(number);
}

double text::roundToEven(double number) {
    const double below = std::floor(number);
    const double rest = number - below;
    if (rest < 0.5) return below;
    if (rest > 0.5) return below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}
