#pragma once

#include <QString>
#include <QStringList>

/// Text functions of the Basic runtime. Positions count from 1; 0 means "not found". Nothing throws unless
/// stated.
namespace text {

/// Without blanks (only U+0020; tabs and line breaks stay) at both ends.
QString trim(QStringView text);

/// Upper case in the user's locale, letter by letter: a letter whose capital takes more than one character
/// (ß) is kept, so that positions do not change.
QString upperCase(QStringView text);
/// Lower case, under the same rule.
QString lowerCase(QStringView text);

/// Position of `needle` at or after position `start`, case-sensitive; 0 if there is none or `start` is after
/// the end of the text. An empty needle is found at `start`.
/// @throws RuntimeError 5 when `start` is less than 1.
qsizetype inStr(QStringView text, QStringView needle, qsizetype start = 1);
/// The same, ignoring case letter by letter.
qsizetype inStrIgnoringCase(QStringView text, QStringView needle, qsizetype start = 1);

/// Up to `length` characters from position `start` on; without a length, all of them.
/// @throws RuntimeError 5 when `start` is less than 1 or `length` is negative.
QString mid(QStringView text, qsizetype start);
QString mid(QStringView text, qsizetype start, qsizetype length);

/// The first `length` characters. A surrogate pair that would be split is left out.
QString cut(const QString& text, qsizetype length);

/// The text without unpaired surrogates, which UTF-8 cannot represent.
QString wholeLetters(QStringView text);

/// The text from the first `marker` on. @throws RuntimeError 5 when it has none.
QString fromFirst(QStringView text, QStringView marker);

/// The parts between separators, including empty ones; none for an empty text.
QStringList split(const QString& text, QChar separator);

/// True for an optional sign followed by digits with at most one decimal separator of the user's locale,
/// surrounded by any blanks. At least one digit is required.
bool isNumeric(QStringView text);

/// The number at the beginning of a text: blanks, tabs and line breaks are skipped; sign, digits, one point
/// and an exponent are read up to the first other character; 0 if there is no number. The decimal separator
/// is always the point.
double Val(QStringView text);

/// A numeric text (see isNumeric) as a number.
/// @throws RuntimeError 13 when the text is not numeric.
double toNumber(QStringView text);

/// A numeric text (see isNumeric) as a 32-bit integer, halves rounded to even.
/// @throws RuntimeError 13 when the text is not numeric, 6 on overflow.
qint32 toLong(QStringView text);

/// The nearest integer, halves rounded to even (2.5 gives 2, 3.5 gives 4).
double roundToEven(double number);

}  // namespace text
