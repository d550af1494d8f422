#include "pictures/JpegScans.h"

namespace velmora {

// Within the data of a scan a byte FF never has DA behind it, so every scan's marker is counted.
qint64 countJpegScans(QByteArrayView bytes)
{
    constexpr QByteArrayView kStartOfScan = "\xFF\xDA";
    qint64 scans = 0;
    for (qsizetype at = bytes.indexOf(kStartOfScan); at >= 0;
         at = bytes.indexOf(kStartOfScan, at + kStartOfScan.size())) {
        ++scans;
    }
    return scans;
}

} // namespace velmora
