#include "settings/WindowPlace.h"

#include <algorithm>

namespace velmora {

WindowPlace readPlace(const SettingsFile &settings, const WindowPlaceKeys &keys, Problems &problems)
{
    const auto read = [&](QStringView key) {
        return problems.orDefault([&] { return settings.int16(u"Control", key); }, 0);
    };
    return {std::min(read(keys.top), keys.cap.top), std::min(read(keys.left), keys.cap.left)};
}

void writePlace(const SettingsFile &settings, const WindowPlaceKeys &keys, WindowPlace place)
{
    settings.write(u"Control", keys.top, place.top);
    settings.write(u"Control", keys.left, place.left);
}

} // namespace velmora
