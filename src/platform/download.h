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
    std::chrono::milliseconds whole{300'000};  ///< longest time for all of it, however steadily it drips in
    qint64 bytes = qint64{64} * 1024 * 1024;   ///< largest content, in all redirects together
};

/// The URL for a text, which is encoded as Windows-1250: a non-ASCII character becomes its percent-encoded
/// byte, one outside the code page "?", a blank "%20", and a "%" that begins no encoded byte "%25". All else
/// is kept, apart from characters not allowed in a URL. Invalid if no URL results.
QUrl downloadAddress(const QString& url);

/// The fetching of one address, of http or https, into a file, readable by its owner only. It begins when the
/// object is made, goes through the system's proxy and follows redirects, but none from https to http. Its
/// memory stays below a few megabytes whatever the server sends.
class Download final : public QObject {
    Q_OBJECT

 public:
    Download(const QString& url, const QString& path, const DownloadLimits& limits = {});
    /// Leaves a download that is still running.
    ~Download() override;

    /// Waits until the download has ended, but no longer than `longest`. Windows are painted and timers run
    /// meanwhile; what the user does waits. @return true when it has ended.
    bool wait(std::chrono::milliseconds longest);

    bool isFinished() const noexcept { return finished_; }
    /// The host asked; shown to the user.
    QString host() const { return host_; }
    /// Bytes of content received so far.
    qint64 received() const noexcept;

    /// Gives a finished download its file.
    /// @return true when the whole content has been stored. On any failure false, and a file that was there
    /// before is left as it was; an HTTP status other than 2xx, a broken connection, a reached limit and a
    /// full disk are failures too, and so is a download that has not ended.
    bool keep();

 signals:
    /// The download has ended, well or not.
    void finished();

 private:
    QString host_;
    QSaveFile file_;
    std::unique_ptr<HttpTransfer> transfer_;
    std::unique_ptr<QThread> thread_;
    bool succeeded_ = false;  // written by the thread, read once it has ended
    bool finished_ = false;
};

/// Fetches `url` into `path` and waits for it, however long it takes; see Download.
/// @return true when the whole content has been stored.
bool download(const QString& url, const QString& path, const DownloadLimits& limits = {});
