#pragma once

#include <QBuffer>
#include <QImage>

/// A picture file of one colour in a format that Qt writes.
inline QByteArray pictureOf(QRgb colour, const char* format, QSize size = {80, 120}) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return image.save(&buffer, format) ? bytes : QByteArray();
}
