#include "platform/Curl.h"

#include <QLibrary>
#include <QtGlobal>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

template <typename Function>
bool resolve(QLibrary& library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(library.resolve(name));
    return function != nullptr;
}

std::optional<Curl> load() {
    constexpr int interfaceVersion = 4;              // libcurl.so.4, unchanged since 2006
    constexpr unsigned allowedProtocols = 0x075500;  // the version that brought CURLOPT_PROTOCOLS_STR
#ifdef Q_OS_WIN
    QLibrary library(u"libcurl"_s);
#else
    QLibrary library(u"curl"_s, interfaceVersion);
#endif
    Curl curl;
    decltype(&curl_global_init) globalInit = nullptr;
    decltype(&curl_version_info) version = nullptr;
    const bool complete =
        resolve(library, "curl_global_init", globalInit) && resolve(library, "curl_version_info", version) &&
        resolve(library, "curl_easy_init", curl.easyInit) && resolve(library, "curl_easy_setopt", curl.set) &&
        resolve(library, "curl_easy_getinfo", curl.info) &&
        resolve(library, "curl_easy_cleanup", curl.easyCleanup) &&
        resolve(library, "curl_multi_init", curl.multiInit) &&
        resolve(library, "curl_multi_add_handle", curl.add) &&
        resolve(library, "curl_multi_remove_handle", curl.remove) &&
        resolve(library, "curl_multi_perform", curl.perform) &&
        resolve(library, "curl_multi_poll", curl.poll) &&
        resolve(library, "curl_multi_info_read", curl.readResult) &&
        resolve(library, "curl_multi_cleanup", curl.multiCleanup) &&
        resolve(library, "curl_slist_append", curl.append) &&
        resolve(library, "curl_slist_free_all", curl.freeList);
    if (!complete || version(CURLVERSION_NOW)->version_num < allowedProtocols ||
        globalInit(CURL_GLOBAL_DEFAULT) != CURLE_OK) {
        qWarning("libcurl cannot be used: %s", qPrintable(library.errorString()));
        return std::nullopt;
    }
    return curl;
}

}  // namespace

const Curl* Curl::loaded() {
    static const std::optional<Curl> curl = load();
    return curl ? &*curl : nullptr;
}
