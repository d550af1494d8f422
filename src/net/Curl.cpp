#include "net/Curl.h"

#include <QLibrary>

namespace velmora {
namespace {

template <typename Function>
void take(Function &function, QLibrary &library, const char *symbol)
{
    function = reinterpret_cast<Function>(library.resolve(symbol));
    if (function == nullptr) {
        throw NoCurl(
            (library.fileName() + QStringLiteral(" lacks ") + QLatin1String(symbol)).toStdString());
    }
}

// With the first transfer, since it takes a while. If it fails, so does making the transfer.
Curl initialised()
{
    Curl curl = loadCurl(QStringLiteral("libcurl.so.4"));
    curl.globalInit(CURL_GLOBAL_DEFAULT);
    return curl;
}

} // namespace

Curl loadCurl(const QString &file)
{
    QLibrary library(file);
    if (!library.load()) {
        throw NoCurl(library.errorString().toStdString());
    }
    Curl curl;
    take(curl.easyCleanup, library, "curl_easy_cleanup");
    take(curl.easyGetinfo, library, "curl_easy_getinfo");
    take(curl.easyHeader, library, "curl_easy_header");
    take(curl.easyInit, library, "curl_easy_init");
    take(curl.easyPause, library, "curl_easy_pause");
    take(curl.easyRecv, library, "curl_easy_recv");
    take(curl.easySend, library, "curl_easy_send");
    take(curl.easySetopt, library, "curl_easy_setopt");
    take(curl.easyStrerror, library, "curl_easy_strerror");
    take(curl.globalInit, library, "curl_global_init");
    take(curl.multiAddHandle, library, "curl_multi_add_handle");
    take(curl.multiCleanup, library, "curl_multi_cleanup");
    take(curl.multiInfoRead, library, "curl_multi_info_read");
    take(curl.multiInit, library, "curl_multi_init");
    take(curl.multiRemoveHandle, library, "curl_multi_remove_handle");
    take(curl.multiSetopt, library, "curl_multi_setopt");
    take(curl.multiSocketAction, library, "curl_multi_socket_action");
    take(curl.slistAppend, library, "curl_slist_append");
    take(curl.slistFreeAll, library, "curl_slist_free_all");
    take(curl.versionInfo, library, "curl_version_info");
    return curl;
}

const Curl &curl()
{
    static const Curl curl = initialised();
    return curl;
}

} // namespace velmora
