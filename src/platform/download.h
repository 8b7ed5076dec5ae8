#pragma once

#include <QString>
#include <QUrl>
#include <chrono>

/// How long and how large a download may get.
struct DownloadLimits {
    std::chrono::milliseconds quiet{30'000};   ///< longest time in which nothing arrives
    std::chrono::milliseconds whole{300'000};  ///< longest time for all of it, however steadily it drips in
    qint64 bytes = qint64{64} * 1024 * 1024;   ///< largest content
};

/// The address that a text stands for. The text counts as Windows-1250: a character that is not ASCII becomes
/// its percent-encoded byte, one that the code page lacks "?", a blank "%20", and a "%" that begins no
/// encoded byte "%25". All else stays, apart from what no address may hold bare. Invalid when no address
/// comes of it.
QUrl downloadAddress(const QString& url);

/// Fetches `url`, of http or https, into the file at `path`, readable by its owner only. Returns once all is
/// done; until then windows are painted and timers run, and what the user does waits. Goes through the
/// system's proxy and follows redirects, but none from https to http.
/// @return true when the whole content has been stored. On any failure false, and a file that was there
/// before is left as it was; an HTTP status other than 2xx, a broken connection and a reached limit are
/// failures too.
bool download(const QString& url, const QString& path, const DownloadLimits& limits = {});
