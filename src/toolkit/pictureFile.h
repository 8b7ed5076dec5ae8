#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// Picture files of the user and of the web. Raster formats only: a drawing such as SVG can run for minutes
/// and open other files.
namespace pictureFile {

/// The largest picture that is decoded, in bytes of its pixels: 1 GiB, some 268 million pixels.
inline constexpr qint64 mostBytes = qint64{1} << 30;

/// Reads a picture. Its format is detected from the content, not the name; a stored orientation is applied.
/// @param size the size in pixels that it is stretched to while being read; empty for its own.
/// @return a null image for a picture with a valid header that is larger than `mostBytes` or damaged
/// further on.
/// @throws RuntimeError 53 when there is no such file, 481 when it is no raster picture.
QImage read(const QString& path, QSize size = {});

/// As above, but no larger than `most` in either direction: a picture that is smaller keeps its own size.
QImage readUpTo(const QString& path, QSize most);

}  // namespace pictureFile
