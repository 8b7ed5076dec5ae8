#pragma once

#include <QString>

/// The per-user settings: a persistent map from application, section and key to a text.
namespace settings {

/// The stored text; `defaultValue` if the key is missing or the settings cannot be read.
QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue);

/// Stores a text and writes it to disk. If that fails, the text is kept until the program ends.
void SaveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value);

}  // namespace settings
