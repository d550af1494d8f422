// The walk of the automatic scan over groups and cameras.
#pragma once

#include "cameras/CameraAddress.h"

#include <array>

namespace velmora {

/// True for each group that is switched on.
using ActiveGroups = std::array<bool, kGroups>;

/// The next group that is on, behind group 9 from group 0 again; after a full turn without one it
/// is the same group.
[[nodiscard]] int nextGroup(int group, const ActiveGroups &active);

/// The next row; behind row 9, row 0 of the next group that is on.
[[nodiscard]] CameraAddress nextCamera(CameraAddress camera, const ActiveGroups &active);

} // namespace velmora
