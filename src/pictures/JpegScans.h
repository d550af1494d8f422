// Tells how many scans a JPEG has: a progressive one refines its picture scan by scan, and a
// hostile one has thousands of empty scans.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// Number of scans to decode: 1 for an ordinary picture; for one in several scans the true number,
/// or more when it holds a thumbnail with scans of its own.
[[nodiscard]] qint64 countJpegScans(QByteArrayView bytes);

} // namespace velmora
