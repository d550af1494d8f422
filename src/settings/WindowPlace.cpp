#include "settings/WindowPlace.h"

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

// On a second screen a window may be farther away than the settings can say.
int storable(int twips)
{
    using Limits = std::numeric_limits<qint16>;
    return std::clamp<int>(twips, Limits::min(), Limits::max());
}

} // namespace

WindowPlace readPlace(const SettingsFile &settings, const WindowPlaceKeys &keys, Problems &problems)
{
    return {std::min(keys.top.read(settings, problems), keys.cap.top),
            std::min(keys.left.read(settings, problems), keys.cap.left)};
}

void writePlace(const SettingsFile &settings, const WindowPlaceKeys &keys, WindowPlace place)
{
    keys.top.write(settings, storable(place.top));
    keys.left.write(settings, storable(place.left));
}

} // namespace velmora
