#include "platform/download.h"

#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include "platform/HttpTransfer.h"
#include "platform/codepage.h"
#include "platform/files.h"

namespace {

bool isHexDigit(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

}  // namespace

QUrl downloadAddress(const QString& url) {
    const QByteArray bytes = codepage::toWindows1250(url);
    QByteArray encoded;
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        const char byte = bytes[at];
        const bool foreign = static_cast<unsigned char>(byte) >= 0x80;
        // A single stray "%" would make QUrl encode every "%" again.
        const bool stray =
            byte == '%' && !(at + 2 < bytes.size() && isHexDigit(bytes[at + 1]) && isHexDigit(bytes[at + 2]));
        if (foreign || stray || byte == ' ') {
            encoded += '%' + QByteArray(1, byte).toHex().toUpper();
        } else {
            encoded += byte;
        }
    }
    return QUrl::fromEncoded(encoded);
}

Download::Download(const QString& url, const QString& path, const DownloadLimits& limits) : file_(path) {
    const QUrl address = downloadAddress(url);
    host_ = address.host();
    if (!address.isValid() || !file_.open(QIODevice::WriteOnly)) {
        finished_ = true;
        return;
    }
    files::keepToOwner(file_);
    transfer_ = std::make_unique<HttpTransfer>(address, limits, [this](QByteArrayView piece) {
        return file_.write(piece.data(), piece.size()) == piece.size();
    });
    thread_.reset(QThread::create([this] { succeeded_ = transfer_->run(); }));
    connect(thread_.get(), &QThread::finished, this, [this] {
        finished_ = true;
        emit finished();
    });
    thread_->start();
}

Download::~Download() {
    if (thread_ == nullptr) return;
    transfer_->leave();
    thread_->wait();
}

bool Download::wait(std::chrono::milliseconds longest) {
    if (finished_) return true;
    QEventLoop loop;
    connect(this, &Download::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(longest, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    return finished_;
}

qint64 Download::received() const noexcept {
    return transfer_ == nullptr ? 0 : transfer_->received();
}

bool Download::keep() {
    return finished_ && succeeded_ && files::commit(file_);
}

bool download(const QString& url, const QString& path, const DownloadLimits& limits) {
    Download download(url, path, limits);
    // Longer than the transfer's own limit. Quitting the program ends the wait early.
    download.wait(limits.whole + limits.quiet);
    return download.keep();
}
