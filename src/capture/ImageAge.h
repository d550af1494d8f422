// How old a stored image is, by its name.
#pragma once

#include "base/Clock.h"

#include <QByteArrayView>

#include <optional>

namespace velmora {

/// The image's date in a file name of the current form, "yyyyMMdd_HHmmss" followed by four digits
/// and ".". Nothing for any other name, for a date that does not exist, and for the zero date,
/// under which undated images are filed. name: native bytes.
[[nodiscard]] std::optional<WallTime> dateInName(QByteArrayView name);

/// The same day and time one calendar month earlier; the last day of that month if it is shorter.
[[nodiscard]] WallTime oneMonthBefore(WallTime time);

} // namespace velmora
