#include "pictures/JpegScans.h"

#include <string_view>

namespace velmora {

// Within the data of a scan a byte FF never has DA behind it, so every scan's marker is counted.
// (QByteArrayView searches byte by byte; the standard library's search leaps from FF to FF.)
qint64 countJpegScans(QByteArrayView bytes)
{
    constexpr std::string_view kStartOfScan = "\xFF\xDA";
    const std::string_view text(bytes.data(), static_cast<std::size_t>(bytes.size()));
    qint64 scans = 0;
    for (std::size_t at = text.find(kStartOfScan); at != std::string_view::npos;
         at = text.find(kStartOfScan, at + kStartOfScan.size())) {
        ++scans;
    }
    return scans;
}

} // namespace velmora
