#pragma once

#include <QUrl>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/download.h"

class Inflater;

/// Fetches the content of one address, following redirects. It holds no more than a few hundred kilobytes
/// in memory, whatever the server sends.
class HttpTransfer final {
 public:
    /// @param store takes the content piece by piece; false ends the transfer as failed.
    HttpTransfer(QUrl address, const DownloadLimits& limits, std::function<bool(QByteArrayView)> store);
    ~HttpTransfer();
    HttpTransfer(const HttpTransfer&) = delete;
    HttpTransfer& operator=(const HttpTransfer&) = delete;

    /// Fetches everything, on the calling thread.
    /// @return true when the whole content of an answer with a status of 2xx has been stored.
    bool run();

    /// Aborts a running transfer. May be called from any thread.
    void leave() noexcept { left_ = true; }
    /// Bytes of content received so far, before decompression. May be called from any thread.
    qint64 received() const noexcept { return received_; }

 private:
    struct Session;

    /// Fetches one address. @return its status; nothing on failure.
    std::optional<long> fetch(Session& session);
    /// Waits for the transfer of `session` to end.
    /// @return true on success.
    bool drive(Session& session);
    bool takeHeader(QByteArrayView line);
    bool takeContent(QByteArrayView piece);
    /// Prepares for the coding of the answer if this header names one. @return false when it cannot be read.
    bool takeCoding(QByteArrayView header, QByteArrayView coding);
    /// Stores content, decompressed.
    bool keep(QByteArrayView piece);
    bool inTime() const;

    static size_t onHeader(char* bytes, size_t size, size_t count, void* transfer);
    static size_t onContent(char* bytes, size_t size, size_t count, void* transfer);

    using Clock = std::chrono::steady_clock;

    QUrl address_;
    const DownloadLimits limits_;
    const std::function<bool(QByteArrayView)> store_;
    std::atomic<bool> left_ = false;
    std::atomic<qint64> received_ = 0;
    Clock::time_point begun_ = Clock::now();
    Clock::time_point lastProgress_ = begun_;
    qint64 headerBytes_ = 0;
    qint64 keptBytes_ = 0;
    bool headersComplete_ = false;
    bool success_ = false;                // status of 2xx, so that content is to be stored
    std::unique_ptr<Inflater> inflater_;  // for a compressed answer
};
