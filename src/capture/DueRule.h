// When a camera in automatic mode is due.
#pragma once

#include "base/Clock.h"
#include "cameras/BestTime.h"

#include <optional>

namespace velmora {

/// What the decision depends on in automatic mode.
struct AutomaticCheck
{
    BestTime bestTime;                 // must be known
    std::optional<WallTime> lastImage; // local time of the last good download
    int counter = 0;                   // seconds by which the reference lies after it
    WallTime now;
};

/// Due when both parts of the time elapsed since the reference have reached those of the best time:
/// the whole days, and the time of day. They are compared separately, not as one total: with a best
/// time of 26:00:00, an elapsed 2 days 01:00:00 is not due. A last image in the future (the clock
/// has been set back since) counts as unknown, so that the camera does not wait for that date.
[[nodiscard]] bool isAutomaticDue(const AutomaticCheck &check);

} // namespace velmora
