#pragma once

#include <QHash>
#include <QMutex>
#include <QStringList>
#include <memory>
#include <thread>

namespace httplib {
class Server;
}

/// A web server on 127.0.0.1 with a free port and its own thread. It is also a proxy: a proxy is asked for
/// whole addresses, which are targets like others.
class WebServer final {
 public:
    struct Page {
        QByteArray body = {};
        QByteArray type = "text/html; charset=windows-1250";
        int status = 200;
        QByteArray location = {};  ///< where a redirect leads
    };

    /// Speaks http, or https when given the PEM files of a certificate and its key.
    explicit WebServer(const QString& certificate = {}, const QString& key = {});
    ~WebServer();
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;

    /// Such as "http://127.0.0.1:40001", without a trailing "/".
    QString root() const { return root_; }
    /// Sets the answer for a target, such as "/hledat?q=%E8" or "http://film.example/", percent-encoded as it
    /// is sent. Any other target gets 404.
    void serve(const QString& target, const Page& page);
    /// All targets requested, in order; the body of a form follows its target after a blank.
    QStringList targets() const;

 private:
    mutable QMutex mutex_;
    QHash<QString, Page> pages_;
    QStringList targets_;
    std::unique_ptr<httplib::Server> server_;
    QString root_;
    std::thread thread_;
};
