#pragma once

#define CURL_DISABLE_TYPECHECK  // the checks are macros over the linked functions
#include <curl/curl.h>

/// The functions of libcurl that downloads need. The library is loaded with the first download: linked in,
/// it and its own dependencies would cost every start of the program several milliseconds.
struct Curl {
    decltype(&curl_easy_init) easyInit = nullptr;
    decltype(&curl_easy_setopt) set = nullptr;
    decltype(&curl_easy_getinfo) info = nullptr;
    decltype(&curl_easy_cleanup) easyCleanup = nullptr;
    decltype(&curl_multi_init) multiInit = nullptr;
    decltype(&curl_multi_add_handle) add = nullptr;
    decltype(&curl_multi_remove_handle) remove = nullptr;
    decltype(&curl_multi_perform) perform = nullptr;
    decltype(&curl_multi_poll) poll = nullptr;
    decltype(&curl_multi_info_read) readResult = nullptr;
    decltype(&curl_multi_cleanup) multiCleanup = nullptr;
    decltype(&curl_slist_append) append = nullptr;
    decltype(&curl_slist_free_all) freeList = nullptr;

    /// The loaded library; null when it is missing or older than 7.85. May be called from any thread.
    static const Curl* loaded();
};
