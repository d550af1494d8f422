// What a camera's folder holds, judging only by its file names.
#pragma once

#include "base/Clock.h"

#include <QString>

#include <optional>
#include <system_error>

namespace velmora {

struct StoredImages
{
    qint64 count = 0;               // files named like captured images
    std::optional<WallTime> newest; // date of the greatest name, UTC
    std::error_code readError;      // why the folder could not be read to its end; none if it was
};

/// folder: native path; a missing one counts as empty.
[[nodiscard]] StoredImages storedImages(const QString &folder);

} // namespace velmora
