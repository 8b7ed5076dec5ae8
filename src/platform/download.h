#pragma once

#include <QObject>
#include <QSaveFile>
#include <QString>
#include <QUrl>
#include <chrono>
#include <memory>

class HttpTransfer;
class QThread;

/// Limits of a download.
struct DownloadLimits {
    std::chrono::milliseconds quiet{30'000};   ///< longest time in which nothing arrives
    std::chrono::milliseconds whole{300'000};  ///< longest time for the whole download
    qint64 bytes = qint64{64} * 1024 * 1024;   ///< largest content, in all redirects together
};

/// The URL for a text, which is encoded as Windows-1250: a non-ASCII character becomes its percent-encoded
/// byte, one outside the code page "?", a blank "%20", and a "%" that begins no encoded byte "%25". All else
/// is kept, apart from characters not allowed in a URL. Invalid if no URL results.
QUrl downloadAddress(const QString& url);

/// Downloads one http or https address into a file readable by its owner only, on a thread of its own. It
/// starts on construction, uses the system's proxy and follows redirects, except from https to http. It
/// takes no more than a few megabytes of memory, whatever the server sends.
class Download final : public QObject {
    Q_OBJECT

 public:
    Download(const QString& url, const QString& path, const DownloadLimits& limits = {});
    /// Aborts a download that is still running.
    ~Download() override;
    Q_DISABLE_COPY_MOVE(Download)

    /// Waits until the download has ended, but no longer than `longest`. Meanwhile windows are painted and
    /// timers run, but user input is held back.
    /// @return true when it has ended.
    bool wait(std::chrono::milliseconds longest);

    /// The name of the server, to be shown to the user.
    QString host() const { return host_; }
    /// Bytes of content received so far.
    qint64 received() const noexcept;

    /// Puts the file of a finished download into place.
    /// @return true when the whole content has been stored. On any failure an existing file is left
    /// unchanged. Failures include an HTTP status other than 2xx, a broken connection, a limit reached, a
    /// full disk, and a download that has not finished.
    bool keep();

 signals:
    /// The download has ended, successfully or not.
    void finished();

 private:
    QString host_;
    QSaveFile file_;
    std::unique_ptr<HttpTransfer> transfer_;
    std::unique_ptr<QThread> thread_;
    bool succeeded_ = false;  // written by the thread, read once it has ended
    bool finished_ = false;
};

/// Downloads `url` into `path` and waits until it has ended; see Download.
/// @return true when the whole content has been stored.
bool download(const QString& url, const QString& path, const DownloadLimits& limits = {});
