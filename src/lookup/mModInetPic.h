#pragma once

#include <QString>
#include <functional>

/// Downloads a picture into the scratch file for its suffix (the last three characters of the address) and
/// shows it.
/// @param show gets the local path; what it throws (for a file that is not a picture) reaches the caller.
/// @return the local path; "" when the download failed, with nothing shown.
QString NactiWebObrazek(const QString& url, const std::function<void(const QString& path)>& show);

/// The same for an address relative to the shop's root.
QString NactiObrazekObchodu(const QString& shopRoot, const QString& address,
                            const std::function<void(const QString& path)>& show);
