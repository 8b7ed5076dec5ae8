#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <utility>

/// A server in the test's own event loop that answers byte for byte, for what no proper server would send.
class RawServer final : public QTcpServer {
 public:
    using Answer = std::function<void(QTcpSocket&)>;

    /// `answer` is called for each request, once its head has arrived.
    explicit RawServer(Answer answer) : answer_(std::move(answer)) {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
                if (!socket->peek(socket->bytesAvailable()).endsWith("\r\n\r\n")) return;
                socket->readAll();
                answer_(*socket);
            });
        });
    }

    QString root() const { return QStringLiteral("http://127.0.0.1:%1").arg(serverPort()); }

 private:
    Answer answer_;
};
