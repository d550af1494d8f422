// From the address that the user typed to the request that is sent.
#pragma once

#include "capture/HttpRequest.h"

#include <QString>

namespace velmora {

/// An address that holds "<" and a later ">" lists alternatives between them, separated by ":". The
/// request uses the last one; an address without both is used as it is.
[[nodiscard]] QString expandTemplate(const QString &url);

/// True for the address of a stream that is fetched frame by frame, not over HTTP.
[[nodiscard]] bool isRtsp(const QString &url);

/// How an address is fetched. One that ends in ".JPG", in any case, is requested by HTTP/1.0
/// without its scheme, at port 80 unless the host names another; its path extends to the end,
/// including any "#", with characters beyond ASCII as Windows-1252 bytes. Any other is requested as
/// written.
[[nodiscard]] HttpRequest requestFor(const QString &url, std::chrono::milliseconds limit);

/// True when the requests for two addresses go to the same host and port by the same scheme,
/// whatever their paths and logins.
[[nodiscard]] bool isSameServer(const QString &one, const QString &other);

/// How an address is fetched for the live view: by HTTP/1.0 without its scheme, at port 80 unless
/// the host names another, whatever it ends in. Only an "https://" address (in any case) that does
/// not end in ".JPG" is requested as written, since a camera that speaks nothing else could not be
/// seen otherwise. For a host without a path, "/" is requested.
[[nodiscard]] HttpRequest liveRequestFor(const QString &url, std::chrono::milliseconds limit);

} // namespace velmora
