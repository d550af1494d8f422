// The colour of a number compared with the greatest of its kind.
#pragma once

#include <QPalette>

#include <algorithm>
#include <cmath>

namespace velmora {

/// A colour on the way from one to another; part: 0 to 1.
[[nodiscard]] inline QColor mixedColour(const QColor &from, const QColor &to, double part)
{
    const auto mixed = [part](int a, int b) {
        return static_cast<int>(std::lround(a + (b - a) * part));
    };
    return {mixed(from.red(), to.red()), mixed(from.green(), to.green()),
            mixed(from.blue(), to.blue())};
}

/// From a quarter of the palette's highlight to all of it; even small numbers differ from none.
[[nodiscard]] inline QColor heatColour(const QPalette &palette, qsizetype number, qsizetype most)
{
    constexpr double kLeast = 0.25;
    const double part =
        std::sqrt(static_cast<double>(number) / static_cast<double>(std::max<qsizetype>(1, most)));
    return mixedColour(palette.color(QPalette::Base), palette.color(QPalette::Highlight),
                       kLeast + (1 - kLeast) * std::min(1.0, part));
}

/// The colour of a thin line that stands out on a light ground and on a dark one, where the
/// palette's own shades are nearly the ground's.
[[nodiscard]] inline QColor lineColour(const QPalette &palette)
{
    constexpr double kStrength = 0.35;
    return mixedColour(palette.color(QPalette::Base), palette.color(QPalette::Text), kStrength);
}

/// Of the outline of what has the keyboard focus: darker than the palette's highlight on a light
/// ground and lighter on a dark one, where the highlight is nearly as dark.
[[nodiscard]] inline QColor focusColour(const QPalette &palette)
{
    constexpr double kTowardsText = 0.35;
    return mixedColour(palette.color(QPalette::Highlight), palette.color(QPalette::Text),
                       kTowardsText);
}

} // namespace velmora
