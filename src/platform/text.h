#pragma once

#include <QString>
#include <QStringList>

/// Text rules of the Basic runtime that the program's texts are cut and compared by. Positions count from 1,
/// and 0 stands for "not found". Nothing here throws unless it says so.
namespace text {

/// Without the blanks (U+0020 only; tabs and line ends stay) at both ends.
QString trim(QStringView text);

/// Upper case by the user's locale, letter by letter: a letter whose capital takes more than one character
/// (ß) stays as it is, so that a position in the result is the same position in `text`.
QString upperCase(QStringView text);
/// Lower case, under the same rule.
QString lowerCase(QStringView text);

/// Position of `needle` at or after position `start` (from 1), exact match; 0 when there is none, and also
/// when `start` lies behind the text. An empty needle is found at `start`.
/// @throws RuntimeError 5 when `start` is less than 1.
qsizetype inStr(QStringView text, QStringView needle, qsizetype start = 1);
/// The same, ignoring letter case letter by letter.
qsizetype inStrIgnoringCase(QStringView text, QStringView needle, qsizetype start = 1);

/// The `length` characters from position `start` on, fewer when the text ends before; all when no length is
/// given.
/// @throws RuntimeError 5 when `start` is less than 1 or `length` is negative.
QString mid(QStringView text, qsizetype start);
QString mid(QStringView text, qsizetype start, qsizetype length);

/// The text from the first `marker` on. @throws RuntimeError 5 when it has none.
QString fromFirst(QStringView text, QStringView marker);

/// The parts between separators, empty ones included; no part at all for an empty text.
QStringList split(const QString& text, QChar separator);

/// True for an optional sign, digits, and at most one decimal sign of the user's locale among them, with
/// blanks allowed around the whole. At least one digit is needed.
bool isNumeric(QStringView text);

/// The leading number of a text: blanks, tabs and line ends are skipped, then sign, digits, one point and an
/// exponent are read up to the first character that cannot belong to a number; 0 when there is no such
/// beginning. The decimal sign is always the point, whatever the locale.
double Val(QStringView text);

/// A numeric text (see isNumeric) as a number. @throws RuntimeError 13 when the text is not numeric.
double toNumber(QStringView text);

/// A numeric text (see isNumeric) as a 32-bit whole number, halves rounded to the even neighbour.
/// @throws RuntimeError 13 when the text is not numeric, 6 when the number does not fit.
qint32 toLong(QStringView text);

/// The nearest whole number, halves to the even neighbour (2.5 gives 2, 3.5 gives 4).
double roundToEven(double number);

}  // namespace text
