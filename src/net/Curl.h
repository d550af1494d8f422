// libcurl, loaded when it is first used: thirty libraries come with it, for which the first window
// would wait.
#pragma once

#include <QString>

#include <curl/curl.h>

#include <new>
#include <stdexcept>

namespace velmora {

/// The functions of libcurl that the program uses, each with libcurl's own type.
struct Curl
{
    decltype(&curl_easy_cleanup) easyCleanup = nullptr;
    decltype(&curl_easy_getinfo) easyGetinfo = nullptr;
    decltype(&curl_easy_header) easyHeader = nullptr;
    decltype(&curl_easy_init) easyInit = nullptr;
    decltype(&curl_easy_pause) easyPause = nullptr;
    decltype(&curl_easy_recv) easyRecv = nullptr;
    decltype(&curl_easy_send) easySend = nullptr;
    decltype(&curl_easy_setopt) easySetopt = nullptr;
    decltype(&curl_easy_strerror) easyStrerror = nullptr;
    decltype(&curl_global_init) globalInit = nullptr;
    decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
    decltype(&curl_multi_cleanup) multiCleanup = nullptr;
    decltype(&curl_multi_info_read) multiInfoRead = nullptr;
    decltype(&curl_multi_init) multiInit = nullptr;
    decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
    decltype(&curl_multi_setopt) multiSetopt = nullptr;
    decltype(&curl_multi_socket_action) multiSocketAction = nullptr;
    decltype(&curl_slist_append) slistAppend = nullptr;
    decltype(&curl_slist_free_all) slistFreeAll = nullptr;
    decltype(&curl_version_info) versionInfo = nullptr;
};

/// There is no libcurl, or one that lacks a function: what the system says about it.
class NoCurl : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The functions of the library in that file; a name alone is looked for where the system keeps
/// libraries. Throws NoCurl.
[[nodiscard]] Curl loadCurl(const QString &file);

/// libcurl, loaded and initialised by the first call. Throws as above, and tries again at the next
/// call.
[[nodiscard]] const Curl &curl();

/// Sets an option of a transfer. Throws std::bad_alloc when libcurl has no memory to keep its
/// value, the only reason for which it refuses an option that it knows.
template <typename Value>
void setOption(CURL *easy, CURLoption option, Value value)
{
    if (curl().easySetopt(easy, option, value) != CURLE_OK) {
        throw std::bad_alloc();
    }
}

} // namespace velmora
