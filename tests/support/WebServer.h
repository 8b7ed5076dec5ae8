#pragma once

#include <QByteArrayList>
#include <QHash>
#include <QMutex>
#include <QStringList>
#include <QWaitCondition>
#include <memory>
#include <thread>

namespace httplib {
class Server;
}

/// A web server on 127.0.0.1, with a free port and a thread of its own, for as long as it lives. Pages may be
/// added while it runs. It is a proxy as well: that is asked for whole addresses, which are targets like
/// others.
class WebServer final {
 public:
    struct Page {
        QByteArray body = {};
        QByteArray type = "text/html; charset=windows-1250";
        int status = 200;
        QByteArray location = {};  ///< where a redirect leads
    };

    /// Speaks http; with the files of a certificate and its key, in PEM, https.
    explicit WebServer(const QString& certificate = {}, const QString& key = {});
    ~WebServer();
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;

    /// Such as "http://127.0.0.1:40001", without a "/" at its end.
    QString root() const { return root_; }
    /// What stands at a target, such as "/hledat?q=%E8" or "http://film.example/": compared as it is sent,
    /// percent-encoded. Any other target is answered with 404.
    void serve(const QString& target, const Page& page);
    /// All targets asked for, in order.
    QStringList targets() const;
    /// Waits until anything has been asked for. @return false when nothing was within a minute.
    bool waitForRequest() const;
    /// The bodies of all forms sent, in order.
    QByteArrayList posts() const;

 private:
    Page answer(const QString& target);

    mutable QMutex mutex_;
    mutable QWaitCondition asked_;
    QHash<QString, Page> pages_;
    QStringList targets_;
    QByteArrayList posts_;
    std::unique_ptr<httplib::Server> server_;
    QString root_;
    std::thread thread_;
};
