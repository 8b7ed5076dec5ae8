#pragma once

#include <QChar>
#include <QString>

/// A file of separated values as text.
struct CsvText {
    QString text;
    QString encoding;  // as the user knows it: "UTF-8" or "Windows-1250"
    QChar separator;   // comma or semicolon, whichever the first line has more of

    /// Reads a file in UTF-8, with or without a byte order mark, or in Windows-1250.
    /// @throws RuntimeError when it cannot be read, and when it is in neither: damaged UTF-8, with the line.
    static CsvText read(const QString& path);
};

/// How a value is written in a field, so that Null, the empty text and a field that says nothing stay apart:
/// `\N` stands for Null, with or without quotes, and a text that looks like it gets one more backslash in
/// front.
namespace csvField {

/// True for a field that stands for Null.
bool isNull(QStringView field);
/// The text that a field (of which quotes are taken away) stands for.
QString textOf(const QString& field);
/// The field, in quotes, for a text; a null string gives the field for Null.
QString ofText(const QString& text);

}  // namespace csvField
