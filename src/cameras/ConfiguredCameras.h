// Which rows of the camera table have a camera.
#pragma once

#include "cameras/CameraAddress.h"
#include "settings/SettingsFile.h"

#include <vector>

namespace velmora {

/// The cameras that have an address, in the order of the table.
[[nodiscard]] std::vector<CameraAddress> configuredCameras(const SettingsSnapshot &settings);

} // namespace velmora
