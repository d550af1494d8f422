// Where the first image of a GIF is on its screen, which may be larger.
#pragma once

#include <QByteArrayView>
#include <QRect>

#include <optional>

namespace velmora {

/// Nothing when the bytes are cut off before it. bytes: begin like a GIF.
[[nodiscard]] std::optional<QRect> firstGifFrame(QByteArrayView bytes);

} // namespace velmora
