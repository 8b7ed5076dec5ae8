#pragma once

#include <QChar>
#include <QString>

/// The decoded text of a CSV file.
struct CsvText {
    QString text;
    QString encoding;  // named for the user: "UTF-8", "UTF-16" or "Windows-1250"
    QChar separator;   // the one that a first line such as `sep=;` names, which is then left empty; otherwise
                       // comma, semicolon or tab, whichever the first line has most of

    /// Lines that end by CR alone get LF instead. Reads a file in UTF-8, with or without a byte order mark,
    /// in UTF-16 with one or in Windows-1250.
    /// @throws RuntimeError when it is no regular file, larger than 1 GiB or cannot be read, when it begins
    ///         as a workbook, a picture or another kind of file and, with the line in its description, for a
    ///         mixture of encodings, for bytes that its encoding does not have and for NUL.
    static CsvText read(const QString& path);
};

/// How a CSV field tells Null, the empty text and a blank field apart: `\N`, quoted or not, stands for Null,
/// and a text that looks like it is escaped by one more backslash.
namespace csvField {

/// True if the field stands for Null.
bool isNull(QStringView field);
/// The text of a field whose quotes have been removed.
QString textOf(const QString& field);
/// The quoted field for a text; a null string gives the field for Null.
QString ofText(const QString& text);

}  // namespace csvField
