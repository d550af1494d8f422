// Dates as text, above all as the settings file holds them: day first, "dd/MM/yyyy HH:mm:ss".
#pragma once

#include "base/Clock.h"

#include <QString>

#include <optional>

namespace velmora {

/// Calendar and time-of-day fields of a wall time.
struct WallFields
{
    int year = 0;
    int month = 0; // 1 to 12
    int day = 0;   // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

[[nodiscard]] WallFields wallFields(WallTime time);

/// "07/03/2006 14:05:09", "07/03/2006" and "14:05:09".
[[nodiscard]] QString dateText(WallTime time);
[[nodiscard]] QString dayText(WallTime time);
[[nodiscard]] QString timeText(WallTime time);

/// "2006-03-07".
[[nodiscard]] QString isoDayText(WallTime time);

/// "14:05:09" of numbers that need not be a time of day.
[[nodiscard]] QString timeText(int hours, int minutes, int seconds);

/// The form in which reports give times: "2026-11-21T13:40:25Z". time: UTC.
[[nodiscard]] QString universalTimeText(WallTime time);

/// Reads "d/M/yyyy", optionally followed by "H:m" or "H:m:s"; nothing for any other form, or for a
/// day or time that does not exist.
[[nodiscard]] std::optional<WallTime> dateFromText(QStringView text);

/// A number padded with zeros to two digits.
[[nodiscard]] QString twoDigits(int number);

} // namespace velmora
