#include "platform/download.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTemporaryDir>
#include <QTimer>
#include <csignal>

#include "support/RawServer.h"
#include "support/WebServer.h"
#include "support/conversions.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A folder with a file to be replaced, and no proxy but the test's own.
class DownloadTest : public testing::Test {
 protected:
    DownloadTest() {
        forgetProxies();
        store("former");
        QFile::setPermissions(path, QFile::Permissions(0x6664));
    }

    static void forgetProxies() {
        for (const char* name : {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy",
                                 "ALL_PROXY", "no_proxy", "NO_PROXY"})
            qunsetenv(name);
    }

    void store(const QByteArray& bytes) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray stored() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "no file";
    }

    /// A download that fails must leave nothing behind and nothing changed.
    void expectFailure(const QString& url, const DownloadLimits& limits = {}) const {
        EXPECT_FALSE(download(url, path, limits));
        EXPECT_EQ(stored(), QByteArray("former"));
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"page.htm"_s});
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath(u"page.htm"_s);
};

enum class Then { hangUp, hangUpLater, stay };

/// Answers with fixed bytes.
RawServer::Answer saying(const QByteArray& bytes, Then then = Then::hangUp) {
    return [=](QTcpSocket& socket) {
        socket.write(bytes);
        if (then == Then::hangUp) socket.disconnectFromHost();
        if (then == Then::hangUpLater) {
            auto* pause = new QTimer(&socket);
            QObject::connect(pause, &QTimer::timeout, &socket, &QTcpSocket::disconnectFromHost);
            pause->start(20ms);
        }
    };
}

}  // namespace

TEST(DownloadAddress, CountsAsWindows1250AndStaysAsItIsOtherwise) {
    expectEach(
        [](const QString& url) { return QString::fromLatin1(downloadAddress(url).toEncoded()); },
        {u"http://a.cz/hledat?q=Černý pes→http://a.cz/hledat?q=%C8ern%FD%20pes",
         u"http://a.cz/ěščřžýáíéúů€→http://a.cz/%EC%9A%E8%F8%9E%FD%E1%ED%E9%FA%F9%80",
         u"http://a.cz/a  b→http://a.cz/a%20%20b", u"http://a.cz/я/\U0001F3AC→http://a.cz/?/?",
         u"http://a.cz/100%→http://a.cz/100%25", u"http://a.cz/100% č%4g%C8→http://a.cz/100%25%20%E8%254g%C8",
         u"http://a.cz/?a=1+1&b=c;d,(e)*'!~$@:/?x→http://a.cz/?a=1+1&b=c;d,(e)*'!~$@:/?x",
         u"http://a.cz/%2F%26%3F%23%C8%C3%A9→http://a.cz/%2F%26%3F%23%C8%C3%A9",
         u"http://a.cz/Ă©→http://a.cz/%C3%A9", u"http://a.cz//x/../y→http://a.cz//x/../y",
         u"http://a.cz/x\r\nHost: b→http://a.cz/x%0D%0AHost:%20b", u"http://č.cz/→", u"→"});
}

TEST_F(DownloadTest, StoresEveryByteForTheOwnerAlone) {
    QByteArray bytes;
    for (int number = 0; number < 300'000; ++number)
        bytes += static_cast<char>(number * 7 + number / 256);
    WebServer server;
    server.serve(u"/hledat?q=%C8ern%FD%20pes"_s, {bytes});
    server.serve(u"/soubor"_s, {.body = bytes, .type = "application/octet-stream"});
    server.serve(u"/204"_s, {.status = 204});
    for (const QString& target : {u"/hledat?q=Černý pes"_s, u"/soubor"_s}) {
        store("former");
        ASSERT_TRUE(download(server.root() + target, path)) << target.toStdString();
        EXPECT_TRUE(stored() == bytes);
        EXPECT_EQ(QFile::permissions(path) & 0x0077, 0);
        EXPECT_TRUE(QFile::remove(path));
        ASSERT_TRUE(download(server.root() + target, path));
        EXPECT_EQ(QFile::permissions(path) & 0x0077, 0);
    }
    EXPECT_TRUE(download(server.root() + u"/204"_s, path));
    EXPECT_EQ(stored(), "");
}

TEST_F(DownloadTest, FollowsRedirects) {
    WebServer server;
    server.serve(u"/film/5"_s, {"film"});
    server.serve(u"/lost"_s, {.body = "moved", .status = 302, .location = "/nowhere"});
    server.serve(u"/file"_s, {.status = 302, .location = "file:///etc/passwd"});
    server.serve(u"/circle"_s, {.status = 302, .location = "/circle"});
    for (const QString& target : {u"/lost"_s, u"/file"_s, u"/circle"_s})
        expectFailure(server.root() + target);
    for (const int status : {301, 302, 303, 307, 308}) {
        store("former");
        server.serve(u"/old"_s, {.body = "moved", .status = status, .location = "../film/5"});
        EXPECT_TRUE(download(server.root() + u"/old"_s, path)) << status;
        EXPECT_EQ(stored(), "film") << status;
    }
}

TEST_F(DownloadTest, AnAnswerThatIsNotWholeAndGoodChangesNothing) {
    const QByteArray bad[] = {
        "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nlost",
        "HTTP/1.1 500 Internal Server Error\r\nContent-Length: 0\r\n\r\n",
        "HTTP/1.1 300 Multiple Choices\r\nContent-Length: 4\r\n\r\nmany",
        "HTTP/1.1 304 Not Modified\r\n\r\n",
        "HTTP/1.1 302 Found\r\nContent-Length: 4\r\n\r\nlost",
        "HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic\r\nContent-Length: 0\r\n\r\n",
        "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nshort",
        "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n",
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nshort\r\n",
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n50\r\nshort",
        "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 100\r\n\r\nshort",
        "HTTP/1.1 200 OK\r\nContent-",
        "no web server\r\n\r\n",
        ""};
    for (const QByteArray& answer : bad) {
        SCOPED_TRACE(answer.toStdString());
        for (const Then then : {Then::hangUp, Then::hangUpLater}) {
            const RawServer server(saying(answer, then));
            expectFailure(server.root());
        }
    }
}

TEST_F(DownloadTest, ContentUpToTheLimitOnly) {
    // Who never hangs up is given no time-out here: the limit alone must end it.
    const DownloadLimits limits{.quiet = 1h, .bytes = 1000};
    const QByteArray told = "HTTP/1.1 200 OK\r\nContent-Length: ";
    const QByteArray untold = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
    for (const QByteArray& answer :
         {told + "1001\r\n\r\n", untold + QByteArray(1001, 'x'),
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3e9\r\n" + QByteArray(1001, 'x') + "\r\n"}) {
        SCOPED_TRACE(answer.left(60).toStdString());
        const RawServer server(saying(answer, Then::stay));
        expectFailure(server.root(), limits);
    }
    for (const QByteArray& head : {told + "1000\r\n\r\n", untold}) {
        store("former");
        const RawServer server(saying(head + QByteArray(1000, 'x')));
        EXPECT_TRUE(download(server.root(), path, limits));
        EXPECT_EQ(stored(), QByteArray(1000, 'x'));
    }
}

TEST_F(DownloadTest, SilenceEndsADownloadButSlownessDoesNot) {
    for (const char* answer :
         {"", "HTTP/1.1 200 OK\r\n", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nshort"}) {
        SCOPED_TRACE(answer);
        const RawServer server(saying(answer, Then::stay));
        expectFailure(server.root(), {.quiet = 100ms});
    }
    QTimer timer;
    const RawServer slow([&timer](QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\n");
        QObject::connect(&timer, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
        timer.start(300ms);
    });
    EXPECT_TRUE(download(slow.root(), path, {.quiet = 1200ms}));
    EXPECT_EQ(stored(), "xxxxxx");
    // One that would drip for ever is ended all the same.
    store("former");
    const RawServer endless([&timer](QTcpSocket& socket) {
        socket.write("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
        QObject::connect(&timer, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
        timer.start(20ms);
    });
    expectFailure(endless.root(), {.whole = 300ms});
}

TEST_F(DownloadTest, WhatCannotBeReachedChangesNothing) {
    const QString refused = RawServer(saying("")).root();
    for (const QString& url :
         {u"http://name.invalid/"_s, refused, u"https://127.0.0.1:%1/"_s.arg(QUrl(refused).port()), u""_s,
          u"www.csfd.cz/film"_s, u"http://"_s, u"http://č.cz/"_s, QUrl::fromLocalFile(path).toString(),
          u"data:,text"_s, u"ftp://127.0.0.1/x"_s}) {
        SCOPED_TRACE(url.toStdString());
        expectFailure(url);
    }
}

TEST_F(DownloadTest, AFileThatCannotBeWrittenIsAFailure) {
    WebServer server;
    server.serve(u"/"_s, {QByteArray(100'000, 'x')});
    EXPECT_FALSE(download(server.root() + u"/"_s, folder.filePath(u"none/page.htm"_s)));
    EXPECT_FALSE(download(server.root() + u"/"_s, folder.path()));
    EXPECT_FALSE(download(server.root() + u"/"_s, u""_s));
    // As on a full disk.
    rlimit former{};
    getrlimit(RLIMIT_FSIZE, &former);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{50'000, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    expectFailure(server.root() + u"/"_s);
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, handler);
}

TEST_F(DownloadTest, GoesThroughTheSystemsProxy) {
    WebServer proxy;
    proxy.serve(u"http://film.example/hledat?q=%E8"_s, {"film"});
    qputenv("http_proxy", proxy.root().toLatin1());
    EXPECT_TRUE(download(u"http://film.example/hledat?q=č"_s, path));
    EXPECT_EQ(stored(), "film");
    EXPECT_FALSE(download(u"http://film.example/"_s, path));
    EXPECT_EQ(proxy.targets(),
              (QStringList{u"http://film.example/hledat?q=%E8"_s, u"http://film.example/"_s}));
    forgetProxies();
}

TEST_F(DownloadTest, HttpsTakesNoCertificateButATrustedOne) {
    const QTemporaryDir keys;
    const QString certificate = keys.filePath(u"certificate.pem"_s);
    const QString key = keys.filePath(u"key.pem"_s);
    QProcess openssl;
    openssl.start(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-subj"_s,
                                 u"/CN=test"_s, u"-addext"_s, u"subjectAltName=IP:127.0.0.1"_s, u"-keyout"_s,
                                 key, u"-out"_s, certificate});
    ASSERT_TRUE(openssl.waitForFinished() && openssl.exitCode() == 0);
    const WebServer plain;
    WebServer server(certificate, key);
    server.serve(u"/"_s, {"film"});
    server.serve(u"/down"_s, {.status = 302, .location = plain.root().toLatin1() + "/"});
    expectFailure(server.root() + u"/"_s);

    const QSslConfiguration former = QSslConfiguration::defaultConfiguration();
    QSslConfiguration trusting = former;
    trusting.addCaCertificates(certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    expectFailure(server.root() + u"/down"_s);
    EXPECT_EQ(plain.targets(), QStringList());
    const QString otherName = QString(server.root()).replace(u"127.0.0.1"_s, u"localhost"_s);
    expectFailure(otherName + u"/"_s);
    EXPECT_TRUE(download(server.root() + u"/"_s, path));
    EXPECT_EQ(stored(), "film");
    QSslConfiguration::setDefaultConfiguration(former);
}
