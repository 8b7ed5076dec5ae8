#pragma once

#include <QString>
#include <QUrl>
#include <chrono>

/// Limits of a download.
struct DownloadLimits {
    std::chrono::milliseconds quiet{30'000};   ///< without any data
    std::chrono::milliseconds whole{300'000};  ///< for the whole download
    qint64 bytes = qint64{64} * 1024 * 1024;   ///< of content
};

/// The URL for a text, which is encoded as Windows-1250: a non-ASCII character becomes its percent-encoded
/// byte, one outside the code page "?", a blank "%20", and a "%" that begins no encoded byte "%25". All else
/// is kept, apart from characters not allowed in a URL. Invalid if no URL results.
QUrl downloadAddress(const QString& url);

/// Downloads `url` (http or https) into the file `path`, readable by its owner only. Returns when done;
/// meanwhile windows are painted and timers run, and user input waits. Uses the system's proxy and follows
/// redirects, but none from https to http.
/// @return true when the whole content has been stored. On failure false, and an existing file is unchanged;
///         an HTTP status other than 2xx, a broken connection and an exceeded limit are failures too.
bool download(const QString& url, const QString& path, const DownloadLimits& limits = {});
