// How old a stored image is, by its name.
#pragma once

#include "base/Clock.h"

#include <QByteArrayView>

#include <optional>

namespace velmora {

/// The image's date in a file name of the current form, "yyyyMMdd_HHmmss" with four more digits and
/// ".". Nothing for any other name, for a date that does not exist, and for the zero date, under
/// which images of an unknown date are filed. name: native bytes.
[[nodiscard]] std::optional<WallTime> dateInName(QByteArrayView name);

/// The same day and time a calendar month before; the last day of that month when it is shorter.
[[nodiscard]] WallTime oneMonthBefore(WallTime time);

} // namespace velmora
