// What is remembered of a camera's picture kept last, in the camera's own section of the settings.
#pragma once

#include "cameras/CameraAddress.h"
#include "capture/PictureMark.h"
#include "settings/SettingsFile.h"

namespace velmora {

[[nodiscard]] PictureMark storedMark(const SettingsSnapshot &settings, CameraAddress camera);

/// Stores what the mark has; an empty one leaves the settings as they are.
void storeMark(const SettingsFile &settings, CameraAddress camera, const PictureMark &mark);

} // namespace velmora
