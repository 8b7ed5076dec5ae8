#pragma once

#include <QByteArrayView>
#include <QString>

/// Decodes UTF-8. What is broken becomes replacement characters; a byte order mark stays.
QString UTF8NaText(QByteArrayView bytes);

/// The whole text of a file in UTF-8; "" for an empty file.
/// @throws RuntimeError 53 when there is no such file, 75 when it cannot be read.
QString NactiUTF8Soubor(const QString& path);
