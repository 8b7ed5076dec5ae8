#include "platform/download.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QSaveFile>
#include <QTimer>
#include <memory>

#include "platform/codepage.h"

using namespace Qt::StringLiterals;

namespace {

/// The system's proxies, for this manager only: an application-wide factory would affect every socket.
class SystemProxies final : public QNetworkProxyFactory {
 public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
        QList<QNetworkProxy> proxies = systemProxyForQuery(query);
        // Without a proxy Qt reads from an unbuffered socket and may then take a broken connection for the
        // end of the content. The application's default proxy, which is none, uses a buffered socket to the
        // same server.
        for (QNetworkProxy& proxy : proxies) {
            if (proxy.type() == QNetworkProxy::NoProxy) proxy = QNetworkProxy(QNetworkProxy::DefaultProxy);
        }
        return proxies;
    }
};

bool isHexDigit(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

bool succeeded(const QNetworkReply& reply) {
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // Unfinished when the application is quitting, which ends all event loops.
    return reply.isFinished() && reply.error() == QNetworkReply::NoError && status >= 200 && status < 300;
}

/// Writes the reply's content to `file` as it arrives.
bool receive(QNetworkReply& reply, QFileDevice& file, const DownloadLimits& limits) {
    QEventLoop loop;
    bool stored = true;
    const auto store = [&] {
        const qint64 announced = reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
        const QByteArray piece = reply.readAll();
        stored = stored && announced <= limits.bytes && file.pos() + piece.size() <= limits.bytes &&
                 file.write(piece) == piece.size();
        if (!stored) loop.quit();
    };
    QObject::connect(&reply, &QNetworkReply::metaDataChanged, &loop, store);
    QObject::connect(&reply, &QNetworkReply::readyRead, &loop, store);
    QObject::connect(&reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(limits.whole, &loop, &QEventLoop::quit);
    if (!reply.isFinished()) loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (reply.error() == QNetworkReply::NoError) store();
    return stored && succeeded(reply);
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

bool download(const QString& url, const QString& path, const DownloadLimits& limits) {
    QNetworkRequest request(downloadAddress(url));
    const QString scheme = request.url().scheme();
    if (scheme != u"http"_s && scheme != u"https"_s) return false;

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (!file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)) return false;

    request.setTransferTimeout(static_cast<int>(limits.quiet.count()));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    // Qt drops the length of compressed content, so truncation would go unnoticed.
    request.setRawHeader("Accept-Encoding", "identity");
    QNetworkAccessManager manager;
    manager.setProxyFactory(new SystemProxies);
    const std::unique_ptr<QNetworkReply> reply(manager.get(request));
    return receive(*reply, file, limits) && file.commit();
}
