// Which of the hundred cameras.
#pragma once

#include <QtGlobal> // moc cannot read <compare> when it meets that first

#include <compare>

namespace velmora {

inline constexpr int kGroups = 10;
inline constexpr int kRows = 10;

/// Camera of a group and a row, both 0 to 9.
struct CameraAddress
{
    int group = 0;
    int row = 0;

    auto operator<=>(const CameraAddress &) const = default;
};

} // namespace velmora
