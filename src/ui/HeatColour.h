// The colour of a number compared with the greatest of its kind.
#pragma once

#include <QPalette>

#include <algorithm>
#include <cmath>

namespace velmora {

/// From a quarter of the palette's highlight to all of it; even small numbers differ from none.
[[nodiscard]] inline QColor heatColour(const QPalette &palette, qsizetype number, qsizetype most)
{
    constexpr double kLeast = 0.25;
    const double part =
        std::sqrt(static_cast<double>(number) / static_cast<double>(std::max<qsizetype>(1, most)));
    const double strength = kLeast + (1 - kLeast) * std::min(1.0, part);
    const QColor from = palette.color(QPalette::Base);
    const QColor to = palette.color(QPalette::Highlight);
    const auto mixed = [strength](int a, int b) {
        return static_cast<int>(std::lround(a + (b - a) * strength));
    };
    return {mixed(from.red(), to.red()), mixed(from.green(), to.green()),
            mixed(from.blue(), to.blue())};
}

} // namespace velmora
