// The unit in which window places are stored: twips, 15 of which are one pixel.
#pragma once

namespace velmora {

inline constexpr int kTwipsPerPixel = 15;

[[nodiscard]] constexpr int pixels(int twips)
{
    return twips / kTwipsPerPixel;
}

[[nodiscard]] constexpr int twips(int pixels)
{
    return pixels * kTwipsPerPixel;
}

} // namespace velmora
