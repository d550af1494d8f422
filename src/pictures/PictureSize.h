// The sizes of a picture on its way from file to window, as pure rules.
#pragma once

#include "pictures/PictureWish.h"

#include <QSize>

namespace velmora {

/// Of the largest picture: more would take too much memory.
inline constexpr qint64 kMaxPixels = qint64{64} * 1024 * 1024;

/// False for a size that no picture has, and for one of more pixels than that: what has it counts
/// as no picture.
[[nodiscard]] bool isBearable(QSize stored);

/// The final size of a picture of size `own` (upright); for Fit::AtLeast, its lower bound.
[[nodiscard]] QSize wantedSize(QSize own, const PictureWish &wish);

/// 1, 2, 4 or 8: the largest of the JPEG decoder's own reductions that keeps at least the needed
/// size. The decoder supports all eighths, but only these are fast.
[[nodiscard]] int jpegDivisor(QSize stored, QSize needed);

} // namespace velmora
