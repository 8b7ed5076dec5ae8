#include "toolkit/RunningProgram.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 3000;  // milliseconds

/// Under Wayland a window can be activated only with the token of the program that the user has just
/// started.
constexpr const char* activationToken = "XDG_ACTIVATION_TOKEN";

QString nameFor(const QString& folder) {
    const QByteArray path = QFileInfo(folder).canonicalFilePath().toUtf8();
    const QString name =
        u"kalvera-"_s +
        QString::fromLatin1(QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().left(16));
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.isEmpty() ? name : QDir(runtime).filePath(name);
}

void bringToFront() {
    QWidget* front = QApplication::activeModalWidget();
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (!window->isVisible()) continue;
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        if (front == nullptr && window->parentWidget() == nullptr) front = window;
    }
    if (front == nullptr) return;
    if (front->parentWidget() != nullptr) front->parentWidget()->window()->raise();
    front->raise();
    front->activateWindow();
}

}  // namespace

RunningProgram::RunningProgram(const QString& folder) {
    const QString name = nameFor(folder);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    // A killed program leaves its socket behind. The folder's lock guarantees that nobody listens on it.
    QLocalServer::removeServer(name);
    connect(&server_, &QLocalServer::newConnection, this, &RunningProgram::answer);
    if (!server_.listen(name))
        qWarning("Cannot listen for other starts: %s", qPrintable(server_.errorString()));
}

void RunningProgram::answer() {
    QLocalSocket* caller = server_.nextPendingConnection();
    connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
    connect(caller, &QLocalSocket::readyRead, caller, [caller] {
        if (!caller->canReadLine()) return;
        const QByteArray token = caller->readLine().trimmed();
        if (!token.isEmpty()) qputenv(activationToken, token);
        bringToFront();
        caller->write("ok\n");
        caller->disconnectFromServer();
    });
}

bool RunningProgram::callToFront(const QString& folder) {
    QLocalSocket socket;
    socket.connectToServer(nameFor(folder));
    if (!socket.waitForConnected(patience)) return false;
    socket.write(qgetenv(activationToken) + '\n');
    return socket.waitForReadyRead(patience) && socket.readLine() == "ok\n";
}
