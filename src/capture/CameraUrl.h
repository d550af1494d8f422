// From the address that the user typed to the request that goes out.
#pragma once

#include "capture/HttpRequest.h"

#include <QString>

namespace velmora {

/// An address that holds "<" and a later ">" lists alternatives between them, separated by ":". The
/// last one stands in the address requested; an address without both is taken as it is.
[[nodiscard]] QString expandTemplate(const QString &url);

/// True for the address of a stream that is fetched frame by frame, not over HTTP.
[[nodiscard]] bool isRtsp(const QString &url);

/// How an address is fetched. One that ends in ".JPG", in any case, goes out as HTTP/1.0 without
/// its scheme, to port 80 unless the host names another; its path goes to the end, a "#" in it and
/// all, and beyond ASCII in bytes of Windows-1252. Any other goes out as written.
[[nodiscard]] HttpRequest requestFor(const QString &url, std::chrono::milliseconds limit);

/// How an address is fetched for the live view: as HTTP/1.0 without its scheme, to port 80 unless
/// the host names another, whatever it ends in. Only an "https://" address, in any case, that does
/// not end in ".JPG" goes out as written, since a camera that speaks nothing else could not be seen
/// otherwise. A host without a path is asked for "/".
[[nodiscard]] HttpRequest liveRequestFor(const QString &url, std::chrono::milliseconds limit);

} // namespace velmora
