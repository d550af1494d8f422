#include "capture/KeepRule.h"

#include <chrono>

namespace velmora {

bool isNewUndated(const UndatedPicture &picture, FolderState folder)
{
    if (folder == FolderState::Empty) {
        return true;
    }
    if (picture.mark.digest.isEmpty() || picture.mark.digest == picture.stored.digest) {
        return false;
    }
    if (picture.choice.keep == Keep::Clearly) {
        const std::optional<double> difference = differencePercent(picture.mark, picture.stored);
        return !difference || *difference >= picture.choice.percent;
    }
    return true;
}

WallTime undatedDate(const std::optional<WallTime> &answered, const std::optional<WallTime> &stored,
                     WallTime universalNow)
{
    constexpr std::chrono::days kPlausible{1};
    const bool plausible = answered && *answered >= universalNow - kPlausible &&
                           *answered <= universalNow + kPlausible &&
                           (!stored || *answered > *stored);
    if (plausible) {
        return *answered;
    }
    // Pictures of the same second would get the same name; a date far ahead comes from before the
    // clock was set back.
    constexpr std::chrono::minutes kAhead{1};
    const bool isTaken = stored && *stored >= universalNow && *stored < universalNow + kAhead;
    return isTaken ? *stored + std::chrono::seconds{1} : universalNow;
}

} // namespace velmora
