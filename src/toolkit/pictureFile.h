#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// Picture files from the user and from the web.
namespace pictureFile {

/// Reads a picture file. The format is detected from the content, and the stored orientation is applied.
/// @param size in pixels, to which the picture is scaled while it is decoded; empty for its own.
/// @throws RuntimeError 53 when there is no such file, 481 when it is no picture or has more than 50 million
///         pixels.
QImage read(const QString& path, QSize size = {});

}  // namespace pictureFile
