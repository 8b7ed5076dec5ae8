#pragma once

#include <QByteArrayView>
#include <QString>

/// Decodes UTF-8. Invalid bytes become replacement characters; a byte order mark is kept.
QString UTF8NaText(QByteArrayView bytes);

/// The text of a UTF-8 file; "" for an empty one.
/// @throws RuntimeError 53 when there is no such file, 75 when it cannot be read.
QString NactiUTF8Soubor(const QString& path);
