// Dates as people type them.
#pragma once

#include "base/DateText.h"

namespace velmora {

/// A date in any usual form; nothing for other texts. The day comes first ("7/3/2006", "07-03-06",
/// "7.3.2006", "7 March 2006", "7 mars 2006") or the year ("2006-03-07", "20060307"), or the month
/// as a word ("Mar 7, 2006"). Months may be English or French, shortened to three letters or more,
/// with or without accents. Two-digit years are 1930 to 2029. A time after the date must be valid
/// ("7/3/2006 14:30") and is ignored.
[[nodiscard]] std::optional<WallTime> typedDate(const QString &text);

} // namespace velmora
