#include "platform/HttpTransfer.h"

#include <QNetworkProxyFactory>
#include <QSslCertificate>
#include <QSslConfiguration>

#include "platform/Curl.h"
#include "platform/Inflater.h"
#include "platform/index.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRedirects = 20;
constexpr qint64 mostHeaderBytes = qint64{256} * 1024;
constexpr int pollMilliseconds = 50;

bool isWebAddress(const QUrl& url) {
    return url.isValid() && (url.scheme() == u"http" || url.scheme() == u"https");
}

/// The proxy in the form that libcurl takes; "" for none, as libcurl would otherwise look for one itself.
QByteArray systemProxy(const QUrl& address) {
    const QList<QNetworkProxy> proxies =
        QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(address));
    const QNetworkProxy proxy = proxies.value(0);
    QUrl url;
    switch (proxy.type()) {
        case QNetworkProxy::HttpProxy:
        case QNetworkProxy::HttpCachingProxy:
            url.setScheme(u"http"_s);
            break;
        case QNetworkProxy::Socks5Proxy:
            url.setScheme(u"socks5h"_s);
            break;
        default:
            return "";
    }
    url.setHost(proxy.hostName());
    url.setPort(proxy.port());
    url.setUserName(proxy.user());
    url.setPassword(proxy.password());
    return url.toEncoded();
}

/// The certificates that the program trusts, as Qt finds them on each system.
QByteArray trustedCertificates() {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    QList<QSslCertificate> trusted = configuration.caCertificates();
    if (trusted.isEmpty()) trusted = QSslConfiguration::systemCaCertificates();
    QByteArray pem;
    for (const QSslCertificate& certificate : std::as_const(trusted))
        pem += certificate.toPem();
    return pem;
}

}  // namespace

/// libcurl's handles, for one transfer with all its redirects.
struct HttpTransfer::Session {
    explicit Session(const Curl& library) : curl(library), easy(curl.easyInit()), multi(curl.multiInit()) {}
    ~Session() {
        if (easy != nullptr) curl.easyCleanup(easy);
        if (multi != nullptr) curl.multiCleanup(multi);
        curl.freeList(headers);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const Curl& curl;
    CURL* easy;
    CURLM* multi;
    curl_slist* headers = nullptr;
};

HttpTransfer::HttpTransfer(QUrl address, const DownloadLimits& limits,
                           std::function<bool(QByteArrayView)> store)
    : address_(std::move(address)), limits_(limits), store_(std::move(store)) {}

HttpTransfer::~HttpTransfer() = default;

bool HttpTransfer::run() {
    const Curl* curl = Curl::loaded();
    if (curl == nullptr) return false;
    Session session(*curl);
    if (session.easy == nullptr || session.multi == nullptr) return false;
    // In memory only, for sites that redirect until they see a cookie.
    curl->set(session.easy, CURLOPT_COOKIEFILE, "");
    session.headers = curl->append(nullptr, "Accept-Language: cs,en,*");
    session.headers = curl->append(session.headers, "Accept-Encoding: identity");
    for (int redirects = 0; redirects <= mostRedirects && isWebAddress(address_); ++redirects) {
        const std::optional<long> status = fetch(session);
        if (!status) return false;
        if (*status >= 200 && *status < 300) return inflater_ == nullptr || inflater_->ended();
        const char* location = nullptr;
        curl->info(session.easy, CURLINFO_REDIRECT_URL, &location);
        if (location == nullptr) return false;
        const QUrl next = QUrl::fromEncoded(location);
        if (address_.scheme() == u"https" && next.scheme() != u"https") return false;
        address_ = next;
    }
    return false;
}

std::optional<long> HttpTransfer::fetch(Session& session) {
    const Curl& curl = session.curl;
    CURL* easy = session.easy;
    headerBytes_ = 0;
    headersComplete_ = success_ = false;
    lastProgress_ = Clock::now();
    const QByteArray url = address_.toEncoded();
    const QByteArray proxy = systemProxy(address_);
    curl.set(easy, CURLOPT_URL, url.constData());
    curl.set(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl.set(easy, CURLOPT_PATH_AS_IS, 1L);
    curl.set(easy, CURLOPT_PROXY, proxy.constData());
    curl.set(easy, CURLOPT_NOSIGNAL, 1L);
    curl.set(easy, CURLOPT_QUICK_EXIT, 1L);  // do not wait for a pending name lookup
    curl.set(easy, CURLOPT_USERAGENT, "Mozilla/5.0");
    curl.set(easy, CURLOPT_HTTPHEADER, session.headers);
    curl.set(easy, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(limits_.bytes));  // as far as announced
    curl.set(easy, CURLOPT_HEADERFUNCTION, &HttpTransfer::onHeader);
    curl.set(easy, CURLOPT_HEADERDATA, this);
    curl.set(easy, CURLOPT_WRITEFUNCTION, &HttpTransfer::onContent);
    curl.set(easy, CURLOPT_WRITEDATA, this);
    QByteArray certificates;
    if (address_.scheme() == u"https") {
        certificates = trustedCertificates();
        const curl_blob blob{certificates.data(), toSize(certificates.size()), CURL_BLOB_NOCOPY};
        curl.set(easy, CURLOPT_CAINFO_BLOB, &blob);
        curl.set(easy, CURLOPT_CAPATH, nullptr);
    }
    curl.add(session.multi, easy);
    const bool complete = drive(session) && headersComplete_;
    curl.remove(session.multi, easy);
    long status = 0;
    curl.info(easy, CURLINFO_RESPONSE_CODE, &status);
    return complete ? std::optional(status) : std::nullopt;
}

bool HttpTransfer::drive(Session& session) {
    for (int running = 1; running > 0;) {
        if (session.curl.perform(session.multi, &running) != CURLM_OK || !inTime()) return false;
        if (running > 0) session.curl.poll(session.multi, nullptr, 0, pollMilliseconds, nullptr);
    }
    int rest = 0;
    const CURLMsg* result = session.curl.readResult(session.multi, &rest);
    return result != nullptr && result->data.result == CURLE_OK;
}

bool HttpTransfer::inTime() const {
    const Clock::time_point now = Clock::now();
    return !left_ && now - lastProgress_ < limits_.quiet && now - begun_ < limits_.whole;
}

size_t HttpTransfer::onHeader(char* bytes, size_t size, size_t count, void* transfer) {
    const size_t length = size * count;
    return static_cast<HttpTransfer*>(transfer)->takeHeader({bytes, static_cast<qsizetype>(length)}) ? length
                                                                                                     : 0;
}

size_t HttpTransfer::onContent(char* bytes, size_t size, size_t count, void* transfer) {
    const size_t length = size * count;
    return static_cast<HttpTransfer*>(transfer)->takeContent({bytes, static_cast<qsizetype>(length)}) ? length
                                                                                                      : 0;
}

bool HttpTransfer::takeHeader(QByteArrayView line) {
    lastProgress_ = Clock::now();
    headerBytes_ += line.size();
    if (line.startsWith("HTTP/")) {
        // Of a status line such as "HTTP/1.1 200 OK" only the class counts here.
        const qsizetype blank = line.indexOf(' ');
        success_ = blank > 0 && blank + 1 < line.size() && line[blank + 1] == '2';
        headersComplete_ = false;
        inflater_.reset();
    }
    const qsizetype colon = line.indexOf(':');
    if (success_ && colon > 0 && !takeCoding(line.first(colon), line.sliced(colon + 1).trimmed()))
        return false;
    if (line == "\r\n" || line == "\n") headersComplete_ = true;
    return headerBytes_ <= mostHeaderBytes && inTime();
}

bool HttpTransfer::takeContent(QByteArrayView piece) {
    lastProgress_ = Clock::now();
    // The body of a redirect or an error page is dropped, but the limits apply to it as well.
    received_ += piece.size();
    return received_ <= limits_.bytes && inTime() && (!success_ || keep(piece));
}

bool HttpTransfer::takeCoding(QByteArrayView header, QByteArrayView coding) {
    const auto is = [coding](const char* name) { return coding.compare(name, Qt::CaseInsensitive) == 0; };
    if (header.compare("Transfer-Encoding", Qt::CaseInsensitive) == 0) return is("chunked") || is("identity");
    if (header.compare("Content-Encoding", Qt::CaseInsensitive) != 0 || is("identity")) return true;
    if (inflater_ != nullptr || (!is("gzip") && !is("x-gzip") && !is("deflate"))) return false;
    // The library could decompress by itself, but takes a stream that is cut for a whole one.
    inflater_ = std::make_unique<Inflater>();
    return true;
}

bool HttpTransfer::keep(QByteArrayView piece) {
    if (inflater_ == nullptr) return store_(piece);
    return inflater_->inflate(piece, [this](QByteArrayView plain) {
        keptBytes_ += plain.size();
        return keptBytes_ <= limits_.bytes && store_(plain);
    });
}
