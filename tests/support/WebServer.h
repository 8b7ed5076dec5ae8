#pragma once

#include <QHash>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QStringList>
#include <functional>
#include <memory>

/// A web server on 127.0.0.1 with a free port in the test's own event loop. It is also a proxy: a proxy is
/// asked for whole addresses, which are targets like others.
class WebServer final {
 public:
    struct Page {
        QByteArray body = {};
        QByteArray type = "text/html; charset=windows-1250";
        int status = 200;
        QByteArray location = {};  ///< where a redirect leads
    };
    using Answer = std::function<void(QTcpSocket&)>;

    /// Speaks http and calls `answer` for each request, for what no proper server would send.
    explicit WebServer(Answer answer) : WebServer(std::make_unique<QTcpServer>()) {
        answer_ = std::move(answer);
    }
    WebServer() : WebServer(std::make_unique<QTcpServer>()) {}
    /// Speaks https.
    WebServer(const QSslCertificate& certificate, const QSslKey& key)
        : WebServer(std::make_unique<QSslServer>(), QStringLiteral("https")) {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(certificate);
        configuration.setPrivateKey(key);
        dynamic_cast<QSslServer&>(*server_).setSslConfiguration(configuration);
    }

    /// Such as "http://127.0.0.1:40001", without a trailing "/".
    QString root() const { return root_; }
    /// Sets the answer for a target, such as "/hledat?q=%E8" or "http://film.example/", percent-encoded as it
    /// is sent. Any other target gets 404.
    void serve(const QString& target, const Page& page) { pages_.insert(target, page); }
    /// All targets requested, in order; the body of a form follows its target after a blank.
    QStringList targets() const { return targets_; }

 private:
    explicit WebServer(std::unique_ptr<QTcpServer> server, const QString& scheme = QStringLiteral("http"))
        : server_(std::move(server)) {
        server_->listen(QHostAddress::LocalHost);
        root_ = QStringLiteral("%1://127.0.0.1:%2").arg(scheme).arg(server_->serverPort());
        QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(), [this] {
            QTcpSocket* socket = server_->nextPendingConnection();
            const auto read = [this, socket] { respond(*socket); };
            QObject::connect(socket, &QTcpSocket::readyRead, server_.get(), read);
            read();  // what has come before
        });
    }
    void respond(QTcpSocket& socket) {
        const QByteArray request = socket.peek(socket.bytesAvailable());
        const qsizetype head = request.indexOf("\r\n\r\n");
        const qsizetype length = request.left(head).toLower().indexOf("content-length:");
        const QByteArray body = request.mid(head + 4);
        if (head < 0 || (length >= 0 && body.size() < request.mid(length + 15, 9).split('\r')[0].toInt()))
            return;
        socket.readAll();
        if (answer_) return answer_(socket);
        const QString target = QString::fromLatin1(request.split(' ')[1]);
        targets_ += (target + QLatin1Char(' ') + QString::fromLatin1(body)).trimmed();
        const Page page = pages_.value(target, {.body = "missing", .status = 404});
        socket.write("HTTP/1.1 " + QByteArray::number(page.status) +
                     " x\r\nConnection: close\r\nContent-Type: " + page.type +
                     "\r\nContent-Length: " + QByteArray::number(page.body.size()) +
                     (page.location.isEmpty() ? "" : "\r\nLocation: " + page.location) + "\r\n\r\n" +
                     page.body);
        socket.disconnectFromHost();
    }

    Answer answer_;
    QHash<QString, Page> pages_;
    QStringList targets_;
    std::unique_ptr<QTcpServer> server_;
    QString root_;
};
