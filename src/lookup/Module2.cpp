#include "lookup/Module2.h"

#include <QFileInfo>
#include <QStringDecoder>

#include "platform/files.h"

QString UTF8NaText(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::ConvertInitialBom | QStringDecoder::Flag::Stateless);
    return decoder.decode(bytes);
}

QString NactiUTF8Soubor(const QString& path) {
    const QFileInfo file(path);
    if (file.exists() && file.size() == 0) return {};  // whether it can be read or not
    return UTF8NaText(files::readAll(path));
}
