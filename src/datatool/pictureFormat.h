#pragma once

#include <QByteArray>
#include <QString>

/// What a file must be so that the program can show it as a picture.
namespace pictureFormat {

/// Bytes at the beginning of a file that tell its format.
inline constexpr qint64 headLength = 256;

/// True if a file begins as one of the raster formats that `toolkit/pictureFile` reads, apart from WBMP,
/// which has no mark. What comes further on is not looked at: the film editor, too, stores a picture that is
/// damaged there.
/// @param head `headLength` bytes, or the whole of a shorter file.
bool isPicture(const QByteArray& head);

/// True for a type as `PicTyp` holds it, the last three characters of a file's name, if another file can be
/// named by it.
bool isUsableType(const QString& type);

}  // namespace pictureFormat
