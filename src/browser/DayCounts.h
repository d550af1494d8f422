// How many images of a list each day and each hour has: from the order of the names, without
// looking at each of them.
#pragma once

#include "browser/ImageNames.h"

#include <array>
#include <chrono>
#include <vector>

namespace velmora {

inline constexpr int kHoursOfDay = 24;

/// Images of a day, or of an hour of it, that stand one behind the other in the list.
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

/// "20060307".
[[nodiscard]] QByteArray dayKey(std::chrono::year_month_day day);

/// The day with which a name begins; nothing when it is none.
[[nodiscard]] std::optional<std::chrono::year_month_day> dayOfKey(QByteArrayView name);

/// The days that have images, in order. Names that begin with no day count nowhere.
[[nodiscard]] std::vector<DayCount> countDays(const ImageNames &names);

/// The images of each hour of a day, by the times in their names.
[[nodiscard]] HourCounts countHours(const ImageNames &names, std::chrono::year_month_day day);

/// The image whose time is nearest to a moment, "20060307_143000"; of two that are as near, the
/// earlier. Only names that begin with a date and a time are looked at; nothing when there is none.
[[nodiscard]] std::optional<qsizetype> nearestTo(const ImageNames &names, QByteArrayView moment);

} // namespace velmora
