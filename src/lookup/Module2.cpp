#include "lookup/Module2.h"

#include <QStringDecoder>

#include "platform/files.h"

QString UTF8NaText(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::ConvertInitialBom | QStringDecoder::Flag::Stateless);
    return decoder.decode(bytes);
}

QString NactiUTF8Soubor(const QString& path) {
    return UTF8NaText(files::readAll(path));
}
