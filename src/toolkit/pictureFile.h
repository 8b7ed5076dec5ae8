#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// Picture files of the user and of the web.
namespace pictureFile {

/// The picture of a file: what its bytes are, whatever its name says, and the way up that it tells itself.
/// @param size stretched to that size in pixels while it is read; an empty size for its own.
/// @throws RuntimeError 53 when there is no such file, 481 when it is no picture or has more than 50 million
///         pixels.
QImage read(const QString& path, QSize size = {});

}  // namespace pictureFile
