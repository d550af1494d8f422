#include "base/NameStamp.h"

#include "base/Digits.h"

namespace velmora {
namespace {

using namespace std::chrono;

constexpr qsizetype kTimeAt = kDayLength + 1;

// text: digits only.
int number(QByteArrayView text)
{
    int value = 0;
    for (const char c : text) {
        value = value * 10 + (c - '0');
    }
    return value;
}

QByteArray digits(int number, qsizetype count)
{
    return QByteArray::number(number).rightJustified(count, '0');
}

} // namespace

QByteArray dayKey(year_month_day day)
{
    return digits(int{day.year()}, 4) + digits(static_cast<int>(unsigned{day.month()}), 2) +
           digits(static_cast<int>(unsigned{day.day()}), 2);
}

QByteArray dayKey(WallTime time)
{
    return dayKey(year_month_day{floor<days>(time)});
}

QByteArray momentKey(WallTime time)
{
    const hh_mm_ss clock{time - floor<days>(time)};
    return dayKey(time) + '_' + digits(static_cast<int>(clock.hours().count()), 2) +
           digits(static_cast<int>(clock.minutes().count()), 2) +
           digits(static_cast<int>(clock.seconds().count()), 2);
}

QByteArray dayAndHourKey(WallTime time)
{
    const QByteArray moment = momentKey(time);
    return moment.sliced(kDayLength - 2, 2) + moment.sliced(kTimeAt, 2);
}

bool isStamped(QByteArrayView name)
{
    return name.size() >= kMomentLength && name[kDayLength] == '_' &&
           areDigits(name.first(kDayLength)) &&
           areDigits(name.sliced(kTimeAt, kMomentLength - kTimeAt));
}

std::optional<year_month_day> dayOfName(QByteArrayView name)
{
    if (name.size() < kDayLength || !areDigits(name.first(kDayLength))) {
        return std::nullopt;
    }
    const year_month_day date{year{number(name.first(4))},
                              month{static_cast<unsigned>(number(name.sliced(4, 2)))},
                              day{static_cast<unsigned>(number(name.sliced(6, 2)))}};
    return date.ok() ? std::optional(date) : std::nullopt;
}

std::optional<WallTime> momentOfName(QByteArrayView name)
{
    const auto date = isStamped(name) ? dayOfName(name) : std::nullopt;
    if (!date) {
        return std::nullopt;
    }
    const hours hour{number(name.sliced(kTimeAt, 2))};
    const minutes minute{number(name.sliced(kTimeAt + 2, 2))};
    const seconds second{number(name.sliced(kTimeAt + 4, 2))};
    const bool exists = hour < days{1} && minute < hours{1} && second < minutes{1};
    return exists ? std::optional(local_days{*date} + hour + minute + second) : std::nullopt;
}

} // namespace velmora
