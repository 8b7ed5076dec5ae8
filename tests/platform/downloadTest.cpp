#include "platform/download.h"

#include <QProcess>
#include <QSslConfiguration>
#include <QTimer>

#include "platform/restrictions.h"
#include "support/TemporaryProgram.h"
#include "support/WebServer.h"
#include "support/conversions.h"

using namespace std::chrono_literals;

namespace {

/// No proxy, and a former file at the place of the download that everyone may read.
class DownloadTest : public TemporaryProgram {
 protected:
    DownloadTest() {
        for (const char* name : {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy",
                                 "ALL_PROXY", "no_proxy", "NO_PROXY"})
            qunsetenv(name);
        write(path, "former");
        QFile::setPermissions(path, QFile::Permissions(0x6664));
    }

    /// What is stored by a download.
    QByteArray downloaded(const QString& url, const DownloadLimits& limits = {}) const {
        return download(url, path, limits) ? content(path) : "failed";
    }
    /// A failed download leaves the former file whole and no other.
    void expectFailure(const QString& url, const DownloadLimits& limits = {}) const {
        write(path, "former");
        EXPECT_FALSE(download(url, path, limits)) << url.toStdString();
        EXPECT_EQ(content(path), "former");
        EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden), QStringList{u"page.htm"_s});
    }

    const QString path = at(u"page.htm"_s);
};

constexpr auto never = -1ms;

/// Answers with fixed bytes and hangs up after a pause.
WebServer::Answer saying(const QByteArray& bytes, std::chrono::milliseconds pause = 0ms) {
    return [=](QTcpSocket& socket) {
        socket.write(bytes);
        if (pause != never) QTimer::singleShot(pause, &socket, [&socket] { socket.disconnectFromHost(); });
    };
}

}  // namespace

TEST(DownloadAddress, IsEncodedInWindows1250AndOtherwiseKept) {
    expectEach(
        [](const QString& url) { return QString::fromLatin1(downloadAddress(url).toEncoded()); },
        {u"http://a.cz/ěščř?q=Černý  €→http://a.cz/%EC%9A%E8%F8?q=%C8ern%FD%20%20%80",
         u"http://a.cz/я/\U0001F3AC→http://a.cz/?/?", u"http://a.cz/100%→http://a.cz/100%25",
         u"http://a.cz/100% č%4g%C8→http://a.cz/100%25%20%E8%254g%C8",
         u"http://a.cz//x/../y?a=1+1&b=c;d,(e)*'!~$@:/?x→http://a.cz//x/../y?a=1+1&b=c;d,(e)*'!~$@:/?x",
         u"http://a.cz/%2F%26%3F%23%C8%C3%A9→http://a.cz/%2F%26%3F%23%C8%C3%A9",
         u"http://a.cz/x\r\nHost: b→http://a.cz/x%0D%0AHost:%20b", u"http://č.cz/→", u"→"});
}

TEST_F(DownloadTest, StoresEveryByteForTheOwnerAlone) {
    const QByteArray bytes = noise(300'000);
    WebServer server;
    server.serve(u"/hledat?q=%C8ern%FD%20pes"_s, {bytes});
    for (const char* file : {"replaced", "new"}) {
        EXPECT_TRUE(downloaded(server.root() + u"/hledat?q=Černý pes"_s) == bytes) << file;
        EXPECT_EQ(QFile::permissions(path) & 0x0077, 0) << file;
        QFile::remove(path);
    }
}

TEST_F(DownloadTest, StoresOnlyAWholeSuccessfulAnswerWithinTheLimit) {
    const DownloadLimits limits{.quiet = 1h, .bytes = 1000};  // none of these ends by a timeout
    const QByteArray told = "HTTP/1.1 200 OK\r\nContent-Length: ";
    const QByteArray untold = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
    const QByteArray chunks = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    const QByteArray gzip = "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nConnection: close\r\n\r\n";
    // 1,000 times "x"
    const QByteArray compressed =
        QByteArray::fromHex("1f8b0800000000000203aba81805a360140c770000e6c9413be8030000");
    const std::pair<QByteArray, qsizetype> good[] = {{told + "1000\r\n\r\n" + QByteArray(1000, 'x'), 1000},
                                                     {untold + QByteArray(1000, 'x'), 1000},
                                                     {gzip + compressed, 1000},
                                                     {"HTTP/1.1 204 No Content\r\n\r\n", 0}};
    for (const auto& [answer, length] : good) {
        const WebServer server(saying(answer));
        EXPECT_EQ(downloaded(server.root(), limits), QByteArray(length, 'x'));
    }
    for (const QByteArray& bad :
         {"HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nlost"_ba,
          "HTTP/1.1 300 Multiple Choices\r\nContent-Length: 4\r\n\r\nmany"_ba,
          "HTTP/1.1 304 Not Modified\r\n\r\n"_ba, "HTTP/1.1 302 Found\r\nContent-Length: 4\r\n\r\nlost"_ba,
          told + "100\r\n\r\nshort", told + "100\r\n\r\n", chunks + "5\r\nshort\r\n", chunks + "50\r\nshort",
          ""_ba, gzip, gzip + "short", gzip + compressed.chopped(9), gzip + compressed + "x",
          QByteArray(gzip).replace("Content-E", "Transfer-E") + compressed.chopped(9),
          "HTTP/1.1 200 OK\r\nContent-Encoding: br\r\nConnection: close\r\n\r\nhello"_ba}) {
        SCOPED_TRACE(bad.toStdString());
        for (const auto pause : {0ms, 20ms}) {
            const WebServer server(saying(bad, pause));
            expectFailure(server.root(), limits);
        }
    }
    for (const QByteArray& tooLong :
         {told + "1001\r\n\r\n", untold + QByteArray(1001, 'x'),
          chunks + "3e9\r\n" + QByteArray(1001, 'x') + "\r\n",
          gzip + QByteArray::fromHex("1f8b0800000000000203aba81805a360140c7b000007108ec5e9030000"),

          "HTTP/1.1 200 OK\r\n" + ("X: " + QByteArray(1000, 'y') + "\r\n").repeated(300)}) {
        SCOPED_TRACE(tooLong.left(60).toStdString());
        const WebServer server(saying(tooLong, never));
        expectFailure(server.root(), limits);
    }
}

TEST_F(DownloadTest, SilenceAndTheTimeLimitEndADownloadButSlownessDoesNot) {
    for (const char* answer : {"", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nshort"}) {
        const WebServer server(saying(answer, never));
        expectFailure(server.root(), {.quiet = 100ms});
    }
    QTimer timer;
    QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\n";
    const WebServer dripping([&](QTcpSocket& socket) {
        socket.write(head);
        QObject::connect(&timer, &QTimer::timeout, &socket, [&socket] { socket.write("x"); });
        timer.start();
    });
    timer.setInterval(300ms);
    EXPECT_EQ(downloaded(dripping.root(), {.quiet = 1200ms}), "xxxxxx");
    head = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n";
    timer.setInterval(20ms);
    expectFailure(dripping.root(), {.whole = 300ms});
}

TEST_F(DownloadTest, FailsWithoutAnAnswerAndWithoutAPlace) {
    for (const QString& url :
         {WebServer(saying("")).root(), u""_s, u"www.csfd.cz/film"_s, u"http://"_s, u"http://č.cz/"_s,
          QUrl::fromLocalFile(path).toString(), u"data:,text"_s, u"ftp://127.0.0.1/x"_s})
        expectFailure(url);
    WebServer server;
    server.serve(u"/"_s, {QByteArray(100'000, 'x')});
    EXPECT_FALSE(download(server.root() + u"/"_s, at(u"none/page.htm"_s)));
    onFullDisk(50'000, [&] { expectFailure(server.root() + u"/"_s); });
}

TEST_F(DownloadTest, FollowsRedirectsButNotFromHttpsToHttpAndWantsATrustedCertificate) {
    const QString certificate = at(u"data/certificate.pem"_s);
    const QString key = at(u"data/key.pem"_s);
    QProcess openssl;
    openssl.startCommand(
        u"openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=test "
        "-addext subjectAltName=IP:127.0.0.1 -keyout %1 -out %2"_s.arg(key, certificate));
    ASSERT_TRUE(openssl.waitForFinished() && openssl.exitCode() == 0);
    WebServer plain;
    WebServer safe(QSslCertificate(content(certificate)), QSslKey(content(key), QSsl::Rsa));
    safe.serve(u"/film/5"_s, {"film"});
    safe.serve(u"/down"_s, {.status = 302, .location = plain.root().toLatin1() + "/film/5"});
    expectFailure(safe.root() + u"/film/5"_s);

    const QSslConfiguration former = QSslConfiguration::defaultConfiguration();
    QSslConfiguration trusting = former;
    trusting.addCaCertificates(certificate);
    QSslConfiguration::setDefaultConfiguration(trusting);
    EXPECT_EQ(downloaded(safe.root() + u"/film/5"_s), "film");
    expectFailure(safe.root() + u"/down"_s);
    EXPECT_EQ(plain.targets(), QStringList());
    QSslConfiguration::setDefaultConfiguration(former);
    plain.serve(u"/film/5"_s, {"moved"});
    plain.serve(u"/old"_s, {.status = 302, .location = "../film/5"});
    EXPECT_EQ(downloaded(plain.root() + u"/old"_s), "moved");
}
