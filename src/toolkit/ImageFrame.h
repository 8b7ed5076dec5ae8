#pragma once

#include <QLabel>

/// A framed label that stretches a picture to its own size, ignoring the aspect ratio.
class ImageFrame final : public QLabel {
    Q_OBJECT

 public:
    explicit ImageFrame(QWidget* parent = nullptr);

    /// Shows a picture file, scaled to the frame as it is read; see pictureFile::read. An empty path clears
    /// the frame, and so does a picture too large or too damaged to be decoded.
    /// @throws RuntimeError 53 when there is no such file, 481 when it is no raster picture. The frame then
    ///         keeps its picture.
    void loadPicture(const QString& path);

    /// Lets pictures be read for a frame of up to `size`, in pixels, so that they stay sharp when it grows.
    void setMostSize(const QSize& size) { most_ = size; }

    bool hasPicture() const { return !pixmap().isNull(); }

 private:
    QSize most_;
};
