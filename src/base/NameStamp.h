// The date and time with which the names of images begin, "yyyyMMdd_HHmmss": written and read here
// for all who make such names or go by them.
#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QByteArrayView>

#include <chrono>
#include <optional>

namespace velmora {

inline constexpr qsizetype kDayLength = 8;     // of "20060307"
inline constexpr qsizetype kMomentLength = 15; // of "20060307_140509"

/// What the names of stored images look like, and those of images from earlier versions, which lack
/// the day and hour at the end: patterns for FilePattern.
inline constexpr QByteArrayView kImagePattern = "????????_??????????.*";
inline constexpr QByteArrayView kShortImagePattern = "????????_??????.*";

/// "20060307".
[[nodiscard]] QByteArray dayKey(std::chrono::year_month_day day);
[[nodiscard]] QByteArray dayKey(WallTime time);

/// "20060307_140509".
[[nodiscard]] QByteArray momentKey(WallTime time);

/// Day of the month and hour, "0714": what follows in the name of a captured image.
[[nodiscard]] QByteArray dayAndHourKey(WallTime time);

/// True for a name that begins with digits and "_" as a moment does, whether or not there is such a
/// moment. Names are native bytes.
[[nodiscard]] bool isStamped(QByteArrayView name);

/// The day at the start of a name; nothing if there is none.
[[nodiscard]] std::optional<std::chrono::year_month_day> dayOfName(QByteArrayView name);

/// The day and time at the start of a name; nothing without both.
[[nodiscard]] std::optional<WallTime> momentOfName(QByteArrayView name);

} // namespace velmora
