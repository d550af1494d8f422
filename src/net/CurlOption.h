// Options of a libcurl transfer, none of which may silently be left out.
#pragma once

#include <curl/curl.h>

#include <new>

namespace velmora {

/// Sets an option. Throws std::bad_alloc when libcurl has no memory to keep its value, the only
/// reason for which it refuses an option that it knows.
template <typename Value>
void setOption(CURL *easy, CURLoption option, Value value)
{
    if (curl_easy_setopt(easy, option, value) != CURLE_OK) {
        throw std::bad_alloc();
    }
}

} // namespace velmora
