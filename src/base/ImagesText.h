// A number of images in words.
#pragma once

#include <QString>

namespace velmora {

/// "1 image", "12 images".
[[nodiscard]] QString imagesText(qint64 count);

} // namespace velmora
