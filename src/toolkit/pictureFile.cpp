#include "toolkit/pictureFile.h"

#include <QFileInfo>
#include <QImageReader>
#include <algorithm>
#include <array>

#include "platform/errors.h"
#include "platform/paths.h"

namespace {

constexpr std::array rasterFormats{"avif", "bmp",  "cur", "gif",  "heic", "heif", "icns", "ico",
                                   "jp2",  "jpeg", "jpg", "jxl",  "mng",  "pbm",  "pgm",  "png",
                                   "ppm",  "tga",  "tif", "tiff", "wbmp", "webp", "xbm",  "xpm"};
constexpr qint64 bytesPerPixel = 4;

/// Opens the file and looks at its header.
void open(QImageReader& reader, const QString& path) {
    const QString file = paths::ignoringCase(path);
    if (!QFileInfo(file).isFile()) throw RuntimeError(errors::fileNotFound);
    QImageReader::setAllocationLimit(static_cast<int>(pictureFile::mostBytes >> 20));  // megabytes
    reader.setFileName(file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const bool known =
        reader.canRead() && std::any_of(rasterFormats.begin(), rasterFormats.end(),
                                        [&](const char* name) { return reader.format() == name; });
    if (!known) throw RuntimeError(errors::invalidPicture);
}

QImage decode(QImageReader& reader, QSize size) {
    const QSize own = reader.size();
    if (qint64{own.width()} * own.height() * bytesPerPixel > pictureFile::mostBytes) return {};
    // Scaling is done before the stored orientation is applied.
    if (reader.transformation() & QImageIOHandler::TransformationRotate90) size.transpose();
    if (own.isValid() && !size.isEmpty()) reader.setScaledSize(size);
    QImage image = reader.read();
    // Some formats give no size in their header: only decoding shows whether it is a picture.
    if (image.isNull() && !own.isValid()) throw RuntimeError(errors::invalidPicture);
    return image;
}

}  // namespace

QImage pictureFile::read(const QString& path, QSize size) {
    QImageReader reader;
    open(reader, path);
    return decode(reader, size);
}

QImage pictureFile::readUpTo(const QString& path, QSize most) {
    QImageReader reader;
    open(reader, path);
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize own = turned ? reader.size().transposed() : reader.size();
    return decode(reader, own.boundedTo(most));
}
