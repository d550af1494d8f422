#include "settings/WindowPlace.h"

#include <algorithm>
#include <limits>

namespace velmora {
namespace {

// On a second screen a window may be farther away than the settings can say.
int storable(double twips)
{
    using Limits = std::numeric_limits<qint16>;
    return static_cast<int>(std::clamp<double>(twips, Limits::min(), Limits::max()));
}

} // namespace

WindowPlace readPlace(const SettingsFile &settings, const WindowPlaceKeys &keys, Problems &problems)
{
    return {std::min(keys.top.read(settings, problems), keys.cap.top),
            std::min(keys.left.read(settings, problems), keys.cap.left)};
}

std::optional<int> storedTwips(const SettingsFile &settings, const Int16Key &key)
{
    const QString stored = settings.read(key.section, key.key);
    return stored.isEmpty() ? std::nullopt : std::optional(storable(leadingNumber(stored)));
}

void writePlace(const SettingsFile &settings, const WindowPlaceKeys &keys, WindowPlace place)
{
    keys.top.write(settings, storable(place.top));
    keys.left.write(settings, storable(place.left));
}

} // namespace velmora
