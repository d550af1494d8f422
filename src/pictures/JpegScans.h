// Counts how often a JPEG goes over its picture: a progressive one refines it scan by scan, and a
// hostile one has thousands of empty scans.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// Number of scans that the bytes may hold: the true number, or more when an embedded thumbnail
/// has scans of its own.
[[nodiscard]] qint64 countJpegScans(QByteArrayView bytes);

} // namespace velmora
