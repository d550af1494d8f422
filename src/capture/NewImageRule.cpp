#include "capture/NewImageRule.h"

#include "cameras/BestTime.h"

namespace velmora {

bool isNewImage(const ImageDates &dates, FolderState folder)
{
    if (folder == FolderState::Empty) {
        return true;
    }
    return !dates.header.isEmpty() && (!dates.modified || dates.modified != dates.stored);
}

std::optional<QString> bestTimeCandidate(const ImageDates &dates)
{
    constexpr int kTooManyHours = 100;
    if (!dates.modified || *dates.modified == kZeroDate) {
        return std::nullopt;
    }
    const std::chrono::seconds interval = *dates.modified - dates.stored.value_or(kZeroDate);
    const std::chrono::hh_mm_ss parts{interval};
    if (interval.count() < 0 || parts.hours().count() >= kTooManyHours) {
        return BestTime{}.text();
    }
    return BestTime{static_cast<int>(parts.hours().count()),
                    static_cast<int>(parts.minutes().count()),
                    static_cast<int>(parts.seconds().count())}
        .text();
}

bool replacesBestTime(const QString &candidate, const QString &stored)
{
    const bool unknown =
        stored.isEmpty() || stored == QStringLiteral("0") || stored == BestTime{}.text();
    return unknown || candidate < stored;
}

} // namespace velmora
