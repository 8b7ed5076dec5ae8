#include "support/WebServer.h"

#include <httplib.h>

#include <QFile>

using namespace Qt::StringLiterals;

WebServer::WebServer(const QString& certificate, const QString& key) {
    if (certificate.isEmpty()) {
        server_ = std::make_unique<httplib::Server>();
    } else {
        server_ = std::make_unique<httplib::SSLServer>(QFile::encodeName(certificate).constData(),
                                                       QFile::encodeName(key).constData());
    }
    const auto respond = [this](const httplib::Request& request, httplib::Response& response) {
        const QString target = QString::fromStdString(request.target);
        const QMutexLocker lock(&mutex_);
        targets_.append(request.body.empty() ? target : target + u' ' + QString::fromStdString(request.body));
        const Page page = pages_.value(target, {.body = "missing", .status = 404});
        response.status = page.status;
        response.set_content(page.body.toStdString(), page.type.toStdString());
        if (!page.location.isEmpty()) response.set_header("Location", page.location.toStdString());
    };
    server_->Get("[\\s\\S]*", respond);
    server_->Post("[\\s\\S]*", respond);
    const int port = server_->bind_to_any_port("127.0.0.1");
    root_ = u"%1://127.0.0.1:%2"_s.arg(certificate.isEmpty() ? u"http"_s : u"https"_s).arg(port);
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    // A server told to stop before it listens would never stop.
    while (!server_->is_running())
        std::this_thread::yield();
}

WebServer::~WebServer() {
    server_->stop();
    thread_.join();
}

void WebServer::serve(const QString& target, const Page& page) {
    const QMutexLocker lock(&mutex_);
    pages_.insert(target, page);
}

QStringList WebServer::targets() const {
    const QMutexLocker lock(&mutex_);
    return targets_;
}
