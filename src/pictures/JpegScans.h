// Tells how often a JPEG goes over its picture: a progressive one refines it scan by scan, and a
// hostile one has thousands of empty scans.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// Number of scans that are decoded: 1 of a usual picture; of one that comes in several scans the
/// true number, or more when it holds a thumbnail that has scans of its own.
[[nodiscard]] qint64 countJpegScans(QByteArrayView bytes);

} // namespace velmora
