// The colour in which late cameras are named, and the words for those who see no colours.
#pragma once

#include "ui/HeatColour.h"

namespace velmora {

/// Red, darker on a light ground and lighter on a dark one, so that it can be read on both.
[[nodiscard]] inline QColor lateColour(const QPalette &palette)
{
    constexpr double kTowardsText = 0.35;
    return mixedColour(Qt::red, palette.color(QPalette::Text), kTowardsText);
}

[[nodiscard]] inline QString lateText()
{
    return QStringLiteral("late: nothing new for a long time");
}

} // namespace velmora
