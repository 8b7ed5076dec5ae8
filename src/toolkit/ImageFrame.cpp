#include "toolkit/ImageFrame.h"

#include <QFileInfo>
#include <QImageReader>

#include "platform/errors.h"
#include "platform/paths.h"

namespace {
constexpr qint64 mostPixels = 50'000'000;
}

ImageFrame::ImageFrame(QWidget* parent) : QLabel(parent) {
    setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    setScaledContents(true);
}

void ImageFrame::loadPicture(const QString& path) {
    if (path.isEmpty()) return clear();
    const QString file = paths::ignoringCase(path);
    if (!QFileInfo(file).isFile()) throw RuntimeError(errors::fileNotFound);
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!reader.canRead()) throw RuntimeError(errors::invalidPicture);
    // Decoding can take many times the memory of what is shown, so the picture's own size has to be sane.
    if (qint64{reader.size().width()} * reader.size().height() > mostPixels)
        throw RuntimeError(errors::invalidPicture);
    const QSize shown = contentsRect().size() * devicePixelRatio();
    if (reader.size().isValid() && !shown.isEmpty()) reader.setScaledSize(shown);
    const QImage image = reader.read();
    if (image.isNull()) throw RuntimeError(errors::invalidPicture);
    setPixmap(QPixmap::fromImage(image));
}
