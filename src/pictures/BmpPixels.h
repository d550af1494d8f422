// Tells whether a BMP continues after its header: one cut off in it holds no part of a picture.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// True when the bytes hold a sensible header and at least one pixel.
[[nodiscard]] bool holdsBmpPixels(QByteArrayView bytes);

} // namespace velmora
