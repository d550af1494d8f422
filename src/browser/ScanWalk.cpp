#include "browser/ScanWalk.h"

namespace velmora {

int nextGroup(int group, const ActiveGroups &active)
{
    int next = (group + 1) % kGroups;
    while (!active.at(static_cast<std::size_t>(next)) && next != group) {
        next = (next + 1) % kGroups;
    }
    return next;
}

CameraAddress nextCamera(CameraAddress camera, const ActiveGroups &active)
{
    if (camera.row + 1 < kRows) {
        return {camera.group, camera.row + 1};
    }
    return {nextGroup(camera.group, active), 0};
}

} // namespace velmora
