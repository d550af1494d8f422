// Tells whether a BMP is all there: of one that breaks off, the decoder leaves memory as it found
// it and calls that a picture.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// The bytes hold every pixel that the header counts. False for run-length coded pictures, which
/// may leave pixels out, and for headers that make no sense.
[[nodiscard]] bool isWholeBmp(QByteArrayView bytes);

} // namespace velmora
