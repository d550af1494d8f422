// The caption of an image.
#pragma once

#include <QString>

namespace velmora {

/// Date and time of an image by its name, "07/03/2006 14:05:09"; a name without them is returned as
/// it is.
[[nodiscard]] QString imageCaption(const QString &name);

} // namespace velmora
