#include "toolkit/pictureFile.h"

#include <QFileInfo>
#include <QImageReader>

#include "platform/errors.h"
#include "platform/paths.h"

namespace {
constexpr qint64 mostPixels = 50'000'000;
}

QImage pictureFile::read(const QString& path, QSize size) {
    const QString file = paths::ignoringCase(path);
    if (!QFileInfo(file).isFile()) throw RuntimeError(errors::fileNotFound);
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!reader.canRead()) throw RuntimeError(errors::invalidPicture);
    // Decoding can take far more memory than the scaled result, so the picture's own size is limited.
    if (qint64{reader.size().width()} * reader.size().height() > mostPixels)
        throw RuntimeError(errors::invalidPicture);
    if (reader.size().isValid() && !size.isEmpty()) reader.setScaledSize(size);
    QImage image = reader.read();
    if (image.isNull()) throw RuntimeError(errors::invalidPicture);
    return image;
}
