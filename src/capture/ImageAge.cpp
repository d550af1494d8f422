#include "capture/ImageAge.h"

#include "base/Digits.h"
#include "base/NameStamp.h"

namespace velmora {
namespace {

constexpr qsizetype kDot = 19;

bool isCurrentForm(QByteArrayView name)
{
    return isStamped(name) && name.size() > kDot && name[kDot] == '.' &&
           areDigits(name.sliced(kMomentLength, kDot - kMomentLength));
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
