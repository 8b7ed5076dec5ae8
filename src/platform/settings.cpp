#include "platform/settings.h"

#include <QSettings>
#include <QStringList>

namespace {

QString path(const QString& section, const QString& key) {
    return section + QLatin1Char('/') + key;
}

}  // namespace

QString settings::GetSetting(const QString& application, const QString& section, const QString& key,
                             const QString& defaultValue) {
    QSettings store(QSettings::NativeFormat, QSettings::UserScope, application);
    store.setFallbacksEnabled(false);
    const QVariant value = store.value(path(section, key), defaultValue);
    // An unquoted text with commas, edited by hand, is read as a list.
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(','))
                                                    : value.toString();
}

void settings::SaveSetting(const QString& application, const QString& section, const QString& key,
                           const QString& value) {
    QSettings store(QSettings::NativeFormat, QSettings::UserScope, application);
    store.setValue(path(section, key), value);
    store.sync();
}
