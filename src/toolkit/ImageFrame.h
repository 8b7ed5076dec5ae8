#pragma once

#include <QLabel>

/// A framed label that stretches a picture to its own size, ignoring the aspect ratio.
class ImageFrame final : public QLabel {
    Q_OBJECT

 public:
    explicit ImageFrame(QWidget* parent = nullptr);

    /// Shows a picture file, whose format is detected from its content. An empty path clears the frame. The
    /// pixmap is kept in the size of the frame.
    /// @throws RuntimeError 53 when there is no such file, 481 when it is no picture or has more than
    ///         50 million pixels. The frame is unchanged then.
    void loadPicture(const QString& path);

    bool hasPicture() const { return !pixmap().isNull(); }
};
