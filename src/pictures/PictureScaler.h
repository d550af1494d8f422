// Brings a decoded picture to its size. Qt's own ways hand the work to threads, whose wake-up costs
// more than a thumbnail, and leave nobody the choice.
#pragma once

#include <QImage>
#include <QSize>

namespace velmora {

/// The picture at the given size, each pixel the average of the area that it stands for. image:
/// RGB32 or ARGB32_Premultiplied, not null. size: not empty. A null image when no image of that
/// size can be had.
[[nodiscard]] QImage averaged(const QImage &image, QSize size);

} // namespace velmora
