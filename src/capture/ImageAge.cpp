#include "capture/ImageAge.h"

#include <algorithm>
#include <array>

namespace velmora {
namespace {

constexpr std::array kDigitRuns = {std::pair{0, 8}, std::pair{9, 10}};
constexpr qsizetype kUnderscore = 8;
constexpr qsizetype kDot = 19;

bool areDigits(QByteArrayView text)
{
    return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

bool isCurrentForm(QByteArrayView name)
{
    return name.size() > kDot && name[kUnderscore] == '_' && name[kDot] == '.' &&
           std::ranges::all_of(kDigitRuns, [name](auto run) {
               return areDigits(name.sliced(run.first, run.second));
           });
}

int number(QByteArrayView name, qsizetype from, qsizetype digits)
{
    return name.sliced(from, digits).toInt();
}

} // namespace

std::optional<WallTime> dateInName(QByteArrayView name)
{
    using namespace std::chrono;
    if (!isCurrentForm(name)) {
        return std::nullopt;
    }
    const year_month_day date{year{number(name, 0, 4)},
                              month{static_cast<unsigned>(number(name, 4, 2))},
                              day{static_cast<unsigned>(number(name, 6, 2))}};
    const hours hour{number(name, 9, 2)};
    const minutes minute{number(name, 11, 2)};
    const seconds second{number(name, 13, 2)};
    if (!date.ok() || hour >= days{1} || minute >= hours{1} || second >= minutes{1}) {
        return std::nullopt;
    }
    const WallTime time = local_days{date} + hour + minute + second;
    return time == kZeroDate ? std::nullopt : std::optional(time);
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
