#pragma once

#include <QLabel>

/// A frame with a line around it that stretches a picture to its own size, whatever the picture's
/// proportions.
class ImageFrame final : public QLabel {
    Q_OBJECT

 public:
    explicit ImageFrame(QWidget* parent = nullptr);

    /// Shows the picture of a file: what its bytes are, whatever its name says. An empty path empties the
    /// frame. What is kept afterwards is as large as the frame.
    /// @throws RuntimeError 53 when there is no such file, 481 when it is no picture or has more than
    ///         50 million pixels. The frame keeps what it shows then.
    void loadPicture(const QString& path);

    bool hasPicture() const { return !pixmap().isNull(); }
};
