// Counts a list's images by day and hour, using the order of the names instead of looking at each.
#pragma once

#include "base/NameStamp.h"
#include "browser/ImageNames.h"

#include <array>
#include <chrono>
#include <vector>

namespace velmora {

inline constexpr int kHoursOfDay = 24;

/// Consecutive images of a list, from one day or one hour of it.
struct ImageRun
{
    qsizetype first = 0; // position, from 0
    qsizetype count = 0;

    bool operator==(const ImageRun &) const = default;
};

struct DayCount
{
    std::chrono::year_month_day day{};
    ImageRun images;

    bool operator==(const DayCount &) const = default;
};

using HourCounts = std::array<ImageRun, kHoursOfDay>;

/// The hour of the date and time at the start of a name; nothing without both.
[[nodiscard]] std::optional<int> hourOfName(QByteArrayView name);

/// The days that have images, in order. Names that do not begin with a day are skipped.
[[nodiscard]] std::vector<DayCount> countDays(const ImageNames &names);

/// The images of one hour of a day, 0 to 23, by the times in their names.
[[nodiscard]] ImageRun countHour(const ImageNames &names, std::chrono::year_month_day day,
                                 int hour);

/// The same for each hour of the day.
[[nodiscard]] HourCounts countHours(const ImageNames &names, std::chrono::year_month_day day);

/// The image whose time is nearest to a moment, "20060307_143000"; of two equally near, the
/// earlier. Considers only names that begin with a date and time; nothing when there are none.
[[nodiscard]] std::optional<qsizetype> nearestTo(const ImageNames &names, QByteArrayView moment);

} // namespace velmora
