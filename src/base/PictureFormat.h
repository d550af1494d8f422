// Tells a picture's format from its first bytes. Names are often wrong, and a decoder that is not
// called cannot fail.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace velmora {

inline constexpr QByteArrayView kJpegFormat = "jpeg";
inline constexpr QByteArrayView kPngFormat = "png";
inline constexpr QByteArrayView kBmpFormat = "bmp";
inline constexpr QByteArrayView kGifFormat = "gif";
inline constexpr QByteArrayView kWebpFormat = "webp";

/// The decoder's name for the format, or nothing for an unsupported one.
[[nodiscard]] QByteArray pictureFormat(QByteArrayView bytes);

} // namespace velmora
