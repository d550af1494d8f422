// The walk of the automatic scan over groups and cameras.
#pragma once

#include "cameras/CameraAddress.h"

#include <array>

namespace velmora {

/// True for each group that is switched on.
using ActiveGroups = std::array<bool, kGroups>;

/// The next group that is on, continuing from group 9 to group 0; the same group if no other is on.
[[nodiscard]] int nextGroup(int group, const ActiveGroups &active);

/// The next row; after row 9, row 0 of the next group that is on.
[[nodiscard]] CameraAddress nextCamera(CameraAddress camera, const ActiveGroups &active);

} // namespace velmora
