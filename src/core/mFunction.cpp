#include "core/mFunction.h"

#include "platform/settings.h"

using namespace Qt::StringLiterals;

namespace {

QString application() {
    return u"BremDVDKalvera"_s;
}

QString section() {
    return u"Settings"_s;
}

}  // namespace

void UlozNastaveni(const QString& key, const QString& value) {
    settings::SaveSetting(application(), section(), key, value);
}

QString CtiNastaveni(const QString& key, const QString& defaultValue) {
    return settings::GetSetting(application(), section(), key, defaultValue);
}

QString JazykText(qint32 jazyk) {
    switch (jazyk) {
        case 0:
            return u"Česky"_s;
        case 1:
            return u"CZ Titulky"_s;
        default:
            return u"Neuvedeno"_s;
    }
}

qint16 NajdiItemData(const QAbstractItemModel& entries, const DbValue& value, qint16 defaultIndex) {
    if (value.isNull()) return defaultIndex;
    const qint32 wanted = value.toLong();
    for (int row = 0; row < entries.rowCount(); ++row) {
        const QVariant data = entries.index(row, 0).data(Qt::UserRole);
        if (data.isValid() && data.toInt() == wanted) return static_cast<qint16>(row);
    }
    return defaultIndex;
}
