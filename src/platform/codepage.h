#pragma once

#include <QByteArray>
#include <QString>

/// Windows-1250, the single-byte code page of the files that the program writes and of the old data.
/// Qt knows it only where Qt was built with ICU, which it is not on every system, hence a table of our own.
namespace codepage {

/// One byte for each character; what the code page lacks becomes '?' (one for a surrogate pair).
QByteArray toWindows1250(QStringView text);

/// One character for each byte. The five bytes that the code page leaves free (0x81, 0x83, 0x88, 0x90, 0x98)
/// become the control character of the same number, and are taken back from it.
QString fromWindows1250(QByteArrayView bytes);

}  // namespace codepage
