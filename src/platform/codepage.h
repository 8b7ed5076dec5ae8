#pragma once

#include <QByteArray>
#include <QString>

/// Windows-1250, the code page of the files that the program writes and of the old data. Qt supports it only
/// when built with ICU, hence a table of our own.
namespace codepage {

/// One byte for each character; characters outside the code page become '?' (one for a surrogate pair).
QByteArray toWindows1250(QStringView text);

/// One character for each byte. The five unassigned bytes (0x81, 0x83, 0x88, 0x90, 0x98) map to the control
/// characters of the same code, in both directions.
QString fromWindows1250(QByteArrayView bytes);

}  // namespace codepage
