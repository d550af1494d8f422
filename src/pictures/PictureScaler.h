// Scales a decoded picture. Qt's own functions hand the work to threads, whose wake-up costs more
// than a thumbnail, and there is no way to choose otherwise.
#pragma once

#include <QImage>
#include <QSize>

namespace velmora {

/// The picture at the given size, each pixel the average of the area it covers. image: RGB32 or
/// ARGB32_Premultiplied, not null. size: not empty. A null image when no image of that size can be
/// allocated.
[[nodiscard]] QImage averaged(const QImage &image, QSize size);

} // namespace velmora
