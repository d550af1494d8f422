// What is remembered of a camera's last picture kept, in the camera's own section of the settings.
#pragma once

#include "cameras/CameraAddress.h"
#include "capture/PictureMark.h"
#include "settings/SettingsFile.h"

namespace velmora {

[[nodiscard]] PictureMark storedMark(const SettingsSnapshot &settings, CameraAddress camera);

/// Stores what the mark has; an empty one leaves the settings unchanged.
void storeMark(const SettingsFile &settings, CameraAddress camera, const PictureMark &mark);

} // namespace velmora
