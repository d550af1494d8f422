// Tells a picture's format from its first bytes. Names lie often enough, and a decoder that is not
// asked for cannot fail.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace velmora {

inline constexpr QByteArrayView kJpegFormat = "jpeg";
inline constexpr QByteArrayView kPngFormat = "png";
inline constexpr QByteArrayView kBmpFormat = "bmp";
inline constexpr QByteArrayView kGifFormat = "gif";
inline constexpr QByteArrayView kWebpFormat = "webp";

/// The decoder's name for the format, or nothing when it is none of ours.
[[nodiscard]] QByteArray pictureFormat(QByteArrayView bytes);

} // namespace velmora
