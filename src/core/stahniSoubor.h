#pragma once

#include <QString>

/// Downloads `url` to the local file `path` by the rules of platform/download.h. On failure an existing file
/// is left unchanged.
/// @return true on success.
bool StahniSoubor(const QString& url, const QString& path);
