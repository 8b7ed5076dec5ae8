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
    // Before routing, as that would split the target and decode it.
    const auto respond = [this](const httplib::Request& request, httplib::Response& response) {
        const Page page = answer(QString::fromStdString(request.target));
        response.status = page.status;
        response.set_content(page.body.toStdString(), page.type.toStdString());
        if (!page.location.isEmpty()) response.set_header("Location", page.location.toStdString());
    };
    server_->set_pre_routing_handler([respond](const httplib::Request& request, httplib::Response& response) {
        // What is posted has not been read yet.
        if (request.method == "POST") return httplib::Server::HandlerResponse::Unhandled;
        respond(request, response);
        return httplib::Server::HandlerResponse::Handled;
    });
    server_->Post(".*", [this, respond](const httplib::Request& request, httplib::Response& response) {
        {
            const QMutexLocker lock(&mutex_);
            posts_.append(QByteArray::fromStdString(request.body));
        }
        respond(request, response);
    });
    const int port = server_->bind_to_any_port("127.0.0.1");
    root_ = u"%1://127.0.0.1:%2"_s.arg(certificate.isEmpty() ? u"http"_s : u"https"_s).arg(port);
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    // A server told to stop before it has begun to listen would never stop.
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

bool WebServer::waitForRequest() const {
    const QMutexLocker lock(&mutex_);
    return !targets_.isEmpty() || asked_.wait(&mutex_, 60000);
}

QByteArrayList WebServer::posts() const {
    const QMutexLocker lock(&mutex_);
    return posts_;
}

WebServer::Page WebServer::answer(const QString& target) {
    const QMutexLocker lock(&mutex_);
    targets_.append(target);
    asked_.wakeAll();
    return pages_.value(target, {.body = "missing", .status = 404});
}
