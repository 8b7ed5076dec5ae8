#include "lookup/Module2.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include "platform/errors.h"

QString UTF8NaText(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::ConvertInitialBom | QStringDecoder::Flag::Stateless);
    return decoder.decode(bytes);
}

QString NactiUTF8Soubor(const QString& path) {
    const QFileInfo info(path);
    if (!info.isFile()) throw RuntimeError(errors::fileNotFound);
    if (info.size() <= 0) return {};
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) throw RuntimeError(errors::pathAccess);
    return UTF8NaText(file.readAll());
}
