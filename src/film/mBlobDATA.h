#pragma once

#include <QString>

#include "platform/ado.h"

/// Copying pictures between files and the column `PicDat`, in chunks of about 100 kB.
///
/// A file of L bytes with C whole blocks of 100000 bytes and F bytes left is stored as one chunk of F + 1
/// bytes and C chunks of 100001 bytes. The column is therefore C + 1 bytes longer than the file; the content
/// of the extra bytes is unspecified. The size column holds L.
namespace blob {

/// Bytes of a block.
inline constexpr qint64 block = 100000;

/// Which of a film's two pictures.
enum class Group { cover, preview };

/// Value of `PicSkup` for a group: "O" cover, "N" preview.
QString letter(Group group);

/// The length of the data column for a picture of `length` bytes.
constexpr qint64 storedLength(qint64 length) {
    return length + length / block + 1;
}

/// Sets the data column of the current row to a file's content and the size column to its length; the
/// recordset's Update stores them. An empty path does nothing. An empty file is reported in a box and leaves
/// the row unchanged.
/// @throws RuntimeError 53 when there is no such file, 75 when it cannot be read, failures of the recordset.
void SouborDoBlob(const ado::Recordset& rs, const QString& path, QStringView dataColumn,
                  QStringView sizeColumn, Group group);

/// Writes the picture of the current row to `\data\obal.` or `\data\nahled.` plus the type, replacing an
/// existing file. With size 0 or Null the existing file is only removed.
/// @param unused is ignored.
/// @throws RuntimeError 75 when the file cannot be replaced, 61 when it cannot be written, 481 when the data
///         are shorter than their size, failures of the recordset. No partial file is left.
void BlobDoSouboru(const ado::Recordset& rs, const QString& unused, QStringView dataColumn,
                   QStringView sizeColumn, const QString& type, Group group);

/// The same to `\data\o` or `\data\n` plus the picture's key, "." and the type.
/// @return the file name without folder, but with "n" as its first letter for either group.
QString BlobDoTisku(const ado::Recordset& rs, QStringView dataColumn, QStringView sizeColumn,
                    const QString& type, qint32 id, Group group);

}  // namespace blob
