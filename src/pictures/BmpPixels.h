// Tells whether a BMP goes on behind its header: what breaks off there holds no part of a picture.
#pragma once

#include <QByteArrayView>

namespace velmora {

/// The bytes hold a header that makes sense and a pixel at least.
[[nodiscard]] bool holdsBmpPixels(QByteArrayView bytes);

} // namespace velmora
