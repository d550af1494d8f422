// What is remembered of a camera's last picture kept, in the camera's own section of the settings.
#pragma once

#include "cameras/CameraAddress.h"
#include "capture/PictureMark.h"
#include "settings/SettingsFile.h"

#include <map>
#include <vector>

namespace velmora {

[[nodiscard]] PictureMark storedMark(const SettingsSnapshot &settings, CameraAddress camera);

/// What is to be stored of a mark; nothing for an empty one.
[[nodiscard]] std::vector<SettingsValue> markToStore(CameraAddress camera, const PictureMark &mark);

/// Knows the mark of each camera's last picture kept: from the settings, or from memory if they did
/// not take it; otherwise that picture would be new at every pass.
class KeptMarks
{
public:
    /// settings: at least the camera's own section.
    [[nodiscard]] PictureMark of(const SettingsSnapshot &settings, CameraAddress camera) const;

    /// A picture was kept. isStored: the settings have its mark.
    void keep(CameraAddress camera, const PictureMark &mark, bool isStored);

private:
    std::map<CameraAddress, PictureMark> notStored_;
};

} // namespace velmora
