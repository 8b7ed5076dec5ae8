#pragma once

#include <QString>

/// Downloads `url` to the local file `path`; the rules are those of platform/download.h. On failure a file
/// that is there already is left as it was.
/// @return true on success.
bool StahniSoubor(const QString& url, const QString& path);
