#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <utility>

/// A server in the test's own event loop that says what it is told, byte for byte: for all that no proper
/// server would say.
class RawServer final : public QTcpServer {
 public:
    using Answer = std::function<void(QTcpSocket&)>;

    /// `answer` is called once for each request, after its head has arrived.
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
