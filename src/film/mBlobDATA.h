#pragma once

#include <QString>

#include "platform/ado.h"

/// Pictures on their way between files and the column `PicDat`, in pieces of about 100 kB whatever their
/// size.
///
/// With L the length of the file, C the whole number of blocks of 100000 bytes in it and F the rest, the
/// column holds one piece of F + 1 bytes and C pieces of 100001 bytes. So it is C + 1 bytes longer than the
/// file; what stands in them has no meaning. The size column holds L, and it alone tells how much is a
/// picture.
namespace blob {

/// Which of a film's two pictures.
enum class Group { cover, preview };

/// The letter of a group in `PicSkup`: "O" cover, "N" preview.
QString letter(Group group);

/// Puts a file into the data column and its length into the size column of the current row; nothing is stored
/// before the recordset's Update. An empty path does nothing. An empty file is told in a box and leaves the
/// row unchanged.
/// @throws RuntimeError 53 when there is no such file, 75 when it cannot be read, failures of the recordset.
void SouborDoBlob(const ado::Recordset& rs, const QString& path, QStringView dataColumn,
                  QStringView sizeColumn, Group group);

/// Takes the picture of the current row out to `\data\obal.` or `\data\nahled.` and the type, in place of a
/// file of that name. Without a size no file is left there.
/// @param unused has no meaning.
/// @throws RuntimeError 75 when the file cannot be replaced, 61 when it cannot be written, 481 when the data
/// are shorter than their size, failures of the recordset. No part of a file is left then.
void BlobDoSouboru(const ado::Recordset& rs, const QString& unused, QStringView dataColumn,
                   QStringView sizeColumn, const QString& type, Group group);

/// The same to `\data\o` or `\data\n`, the picture's key, a point and the type.
/// @return the name without folder, which begins with "n" for either group.
QString BlobDoTisku(const ado::Recordset& rs, QStringView dataColumn, QStringView sizeColumn,
                    const QString& type, qint32 id, Group group);

}  // namespace blob
