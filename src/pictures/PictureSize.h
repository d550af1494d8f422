// The sizes on a picture's way from the file to the window, as pure rules.
#pragma once

#include "pictures/PictureWish.h"

#include <QSize>

namespace velmora {

/// The size that a picture of the size `own` (upright) has in the end; for Fit::AtLeast the size
/// that it may not fall below.
[[nodiscard]] QSize wantedSize(QSize own, const PictureWish &wish);

/// 1, 2, 4 or 8: the largest of the JPEG decoder's own reductions that leaves at least the needed
/// size. The decoder knows all eighths, but only these are fast.
[[nodiscard]] int jpegDivisor(QSize stored, QSize needed);

} // namespace velmora
