#include "toolkit/ImageFrame.h"

#include "toolkit/pictureFile.h"

ImageFrame::ImageFrame(QWidget* parent) : QLabel(parent) {
    setFrameShape(QFrame::Box);
    setFrameShadow(QFrame::Plain);
    setScaledContents(true);
}

void ImageFrame::loadPicture(const QString& path) {
    if (path.isEmpty()) return clear();
    const QSize shown = contentsRect().size() * devicePixelRatio();
    setPixmap(QPixmap::fromImage(most_.isEmpty() ? pictureFile::read(path, shown)
                                                 : pictureFile::readUpTo(path, most_ * devicePixelRatio())));
}
