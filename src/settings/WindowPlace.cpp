#include "settings/WindowPlace.h"

#include <algorithm>

namespace velmora {

WindowPlace readPlace(const SettingsFile &settings, const WindowPlaceKeys &keys, Problems &problems)
{
    return {std::min(keys.top.read(settings, problems), keys.cap.top),
            std::min(keys.left.read(settings, problems), keys.cap.left)};
}

void writePlace(const SettingsFile &settings, const WindowPlaceKeys &keys, WindowPlace place)
{
    keys.top.write(settings, place.top);
    keys.left.write(settings, place.left);
}

} // namespace velmora
