#include "cameras/ConfiguredCameras.h"

#include "cameras/CameraTable.h"

#include <algorithm>
#include <iterator>

namespace velmora {

std::vector<CameraAddress> configuredCameras(const SettingsSnapshot &settings)
{
    std::vector<CameraAddress> cameras;
    std::ranges::copy_if(kAllCameras, std::back_inserter(cameras), [&](CameraAddress camera) {
        return !CameraTable::url(settings, camera).isEmpty();
    });
    return cameras;
}

} // namespace velmora
