#include "capture/DueRule.h"

namespace velmora {

bool isAutomaticDue(const AutomaticCheck &check)
{
    constexpr int kHoursPerDay = 24;
    const WallTime last =
        check.lastImage && *check.lastImage <= check.now ? *check.lastImage : kZeroDate;
    const std::chrono::seconds elapsed = check.now - last - std::chrono::seconds{check.counter};
    const auto days = std::chrono::floor<std::chrono::days>(elapsed);
    const std::chrono::seconds timeOfDay = elapsed - days;

    const std::chrono::days bestDays{check.bestTime.hours / kHoursPerDay};
    const auto bestTimeOfDay = std::chrono::hours{check.bestTime.hours % kHoursPerDay} +
                               std::chrono::minutes{check.bestTime.minutes} +
                               std::chrono::seconds{check.bestTime.seconds};
    return days >= bestDays && timeOfDay >= bestTimeOfDay;
}

} // namespace velmora
