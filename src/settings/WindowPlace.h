// Where a window was when it was last closed.
#pragma once

#include "settings/Keys.h"

#include <optional>

namespace velmora {

/// Position of a window's upper left corner in twips, 1/1440 inch.
struct WindowPlace
{
    int top = 0;
    int left = 0;

    bool operator==(const WindowPlace &) const = default;
};

/// How a window's place is stored, and the largest stored values to use, which keep the window on a
/// small screen.
struct WindowPlaceKeys
{
    Int16Key top;
    Int16Key left;
    WindowPlace cap;
};

inline constexpr WindowPlaceKeys kBrowserPlace{keys::kPlancheTop, keys::kPlancheLeft, {330, 4485}};
inline constexpr WindowPlaceKeys kSlideshowPlace{keys::kFilmTop, keys::kFilmLeft, {6225, 11175}};

/// The stored place, 0 where none is stored; larger values are capped, negative ones are kept.
[[nodiscard]] WindowPlace readPlace(const SettingsFile &settings, const WindowPlaceKeys &keys,
                                    Problems &problems);

/// One coordinate of it in twips, as stored; nothing where none is stored. One too far away for 16
/// bits counts as the farthest.
[[nodiscard]] std::optional<int> storedTwips(const SettingsFile &settings, const Int16Key &key);

/// A place too far away for 16 bits is stored as the farthest.
void writePlace(const SettingsFile &settings, const WindowPlaceKeys &keys, WindowPlace place);

} // namespace velmora
