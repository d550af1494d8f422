// What a camera's folder holds, told from the names of its files alone.
#pragma once

#include "base/Clock.h"

#include <QString>

#include <optional>

namespace velmora {

struct StoredImages
{
    qint64 count = 0;               // files named as captured images
    std::optional<WallTime> newest; // date of the greatest name, universal time
};

/// folder: native path; a missing one holds nothing.
[[nodiscard]] StoredImages storedImages(const QString &folder);

/// "2026-11-21T13:40:25Z".
[[nodiscard]] QString universalTimeText(WallTime time);

} // namespace velmora
