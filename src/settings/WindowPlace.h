// Where a window stood when it was closed last.
#pragma once

#include "settings/Problems.h"
#include "settings/SettingsFile.h"

namespace velmora {

/// Position of a window's upper left corner in twips, 1/1440 inch.
struct WindowPlace
{
    int top = 0;
    int left = 0;

    bool operator==(const WindowPlace &) const = default;
};

/// How a window's place is stored: two keys of the section "Control", and the largest values taken
/// over from them, which keep the window on a small screen.
struct WindowPlaceKeys
{
    QStringView top;
    QStringView left;
    WindowPlace cap;
};

inline constexpr WindowPlaceKeys kBrowserPlace{u"Planche.Top", u"Planche.Left", {330, 4485}};
inline constexpr WindowPlaceKeys kSlideshowPlace{u"fCine.Top", u"fCine.left", {6225, 11175}};

/// The stored place, 0 where none is stored; larger values become the cap, negative ones pass.
[[nodiscard]] WindowPlace readPlace(const SettingsFile &settings, const WindowPlaceKeys &keys,
                                    Problems &problems);

void writePlace(const SettingsFile &settings, const WindowPlaceKeys &keys, WindowPlace place);

} // namespace velmora
