#include "capture/ImageAge.h"

#include "base/NameStamp.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr qsizetype kDot = 19;

bool isCurrentForm(QByteArrayView name)
{
    return isStamped(name) && name.size() > kDot && name[kDot] == '.' &&
           std::ranges::all_of(name.sliced(kMomentLength, kDot - kMomentLength),
                               [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

std::optional<WallTime> dateInName(QByteArrayView name)
{
    const auto time = isCurrentForm(name) ? momentOfName(name) : std::nullopt;
    return time == kZeroDate ? std::nullopt : time;
}

WallTime oneMonthBefore(WallTime time)
{
    using namespace std::chrono;
    const auto today = floor<days>(time);
    year_month_day date = year_month_day{today} - months{1};
    if (!date.ok()) {
        date = date.year() / date.month() / last;
    }
    return local_days{date} + (time - today);
}

} // namespace velmora
