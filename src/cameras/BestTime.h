// A camera's measured refresh interval in the form of the settings file, "HH:MM:SS", whose hours
// include whole days.
#pragma once

#include <QString>

#include <compare>

namespace velmora {

struct BestTime
{
    int hours = 0; // 0 to 99
    int minutes = 0;
    int seconds = 0;

    auto operator<=>(const BestTime &) const = default;

    /// True while no interval has been measured.
    [[nodiscard]] bool isUnknown() const { return *this == BestTime{}; }

    /// "HH:MM:SS".
    [[nodiscard]] QString text() const;
};

/// Reads "H:M:S"; a text of any other form is an unknown time.
[[nodiscard]] BestTime bestTimeFromText(QStringView text);

} // namespace velmora
