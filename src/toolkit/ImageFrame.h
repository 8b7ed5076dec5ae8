#pragma once

#include <QLabel>

/// A framed label that stretches a picture to its own size, ignoring the aspect ratio.
class ImageFrame final : public QLabel {
    Q_OBJECT

 public:
    explicit ImageFrame(QWidget* parent = nullptr);

    /// Shows the picture of a file: what its bytes are, whatever its name says. An empty path empties the
    /// frame. What is kept afterwards is as large as the frame.
    /// A picture too large or too damaged to be decoded leaves the frame empty; see pictureFile::read.
    /// @throws RuntimeError 53 when there is no such file, 481 when it is no raster picture. The frame keeps
    /// what it
    ///         shows then.
    void loadPicture(const QString& path);

    bool hasPicture() const { return !pixmap().isNull(); }
};
