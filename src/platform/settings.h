#pragma once

#include <QString>

/// The per-user store of strings: a persistent map from application, section and key to a text.
namespace settings {

/// The stored text, or `defaultValue` when the key is absent or the store cannot be read.
QString GetSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue);

/// Stores a text. It is on disk when the call returns; where the store cannot be written, the text holds
/// until the program ends and the store stays as it was.
void SaveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value);

}  // namespace settings
