// What is remembered of a camera's last picture kept, in the camera's own section of the settings.
#pragma once

#include "cameras/CameraAddress.h"
#include "capture/PictureMark.h"
#include "settings/SettingsFile.h"

#include <map>

namespace velmora {

[[nodiscard]] PictureMark storedMark(const SettingsSnapshot &settings, CameraAddress camera);

/// Stores marks; one that the settings do not take is kept here, or its picture would be new at
/// every pass.
class KeptMarks
{
public:
    /// settings: at least the camera's own section.
    [[nodiscard]] PictureMark of(const SettingsSnapshot &settings, CameraAddress camera) const;

    void keep(const SettingsFile &settings, CameraAddress camera, const PictureMark &mark);

private:
    std::map<CameraAddress, PictureMark> notStored_;
};

} // namespace velmora
