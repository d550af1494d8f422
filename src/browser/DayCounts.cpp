#include "browser/DayCounts.h"

#include <cstdlib>

namespace velmora {
namespace {

using namespace std::chrono;

constexpr qsizetype kDayDigits = 8;
constexpr qsizetype kMomentLetters = 15;
constexpr int kMostSteps = 64; // past names that hold no time

// A key that sorts after every name that begins with a text: no character is written with that
// byte.
QByteArray behind(const QByteArray &text)
{
    return text + '\xff';
}

std::optional<int> number(QByteArrayView digits)
{
    int value = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        value = value * 10 + (c - '0');
    }
    return value;
}

// Seconds since the epoch of the time at the start of a name.
std::optional<sys_seconds> momentOf(QByteArrayView name)
{
    if (name.size() < kMomentLetters || name[kDayDigits] != '_') {
        return std::nullopt;
    }
    const auto day = dayOfKey(name);
    const auto hour = number(name.sliced(9, 2));
    const auto minute = number(name.sliced(11, 2));
    const auto second = number(name.sliced(13, 2));
    if (!day || !hour || !minute || !second || *hour >= kHoursOfDay || *minute > 59 ||
        *second > 60) {
        return std::nullopt;
    }
    return sys_seconds(sys_days(*day)) + hours(*hour) + minutes(*minute) + seconds(*second);
}

// The first position from `from` on, in steps of `step`, whose name holds a time.
std::optional<qsizetype> timed(const ImageNames &names, qsizetype from, qsizetype step)
{
    for (int tries = 0; tries < kMostSteps && from >= 0 && from < names.count(); ++tries) {
        if (momentOf(names.name(from))) {
            return from;
        }
        from += step;
    }
    return std::nullopt;
}

} // namespace

QByteArray dayKey(year_month_day day)
{
    const int value = int{day.year()} * 10000 + static_cast<int>(unsigned{day.month()}) * 100 +
                      static_cast<int>(unsigned{day.day()});
    return QByteArray::number(value).rightJustified(kDayDigits, '0');
}

std::optional<year_month_day> dayOfKey(QByteArrayView name)
{
    const auto value = number(name.first(std::min(name.size(), kDayDigits)));
    if (name.size() < kDayDigits || !value) {
        return std::nullopt;
    }
    const year_month_day day{year(*value / 10000), month(static_cast<unsigned>(*value / 100 % 100)),
                             std::chrono::day(static_cast<unsigned>(*value % 100))};
    return day.ok() ? std::optional(day) : std::nullopt;
}

std::optional<int> hourOfName(QByteArrayView name)
{
    const auto moment = momentOf(name);
    return moment ? std::optional(static_cast<int>(
                        duration_cast<hours>(*moment - floor<days>(*moment)).count()))
                  : std::nullopt;
}

std::vector<DayCount> countDays(const ImageNames &names)
{
    std::vector<DayCount> days;
    qsizetype at = 0;
    while (at < names.count()) {
        const QByteArray name = names.name(at);
        const auto day = dayOfKey(name);
        if (!day) {
            ++at;
            continue;
        }
        const qsizetype end = names.countBefore(behind(name.first(kDayDigits)));
        days.push_back({*day, {at, end - at}});
        at = std::max(end, at + 1);
    }
    return days;
}

HourCounts countHours(const ImageNames &names, year_month_day day)
{
    HourCounts hours;
    const QByteArray key = dayKey(day) + '_';
    for (int hour = 0; hour < kHoursOfDay; ++hour) {
        const QByteArray text = key + QByteArray::number(hour).rightJustified(2, '0');
        const qsizetype first = names.countBefore(text);
        hours.at(static_cast<std::size_t>(hour)) = {first, names.countBefore(behind(text)) - first};
    }
    return hours;
}

std::optional<qsizetype> nearestTo(const ImageNames &names, QByteArrayView moment)
{
    const auto wanted = momentOf(moment);
    if (!wanted) {
        return std::nullopt;
    }
    const qsizetype place = names.countBefore(moment);
    const auto after = timed(names, place, 1);
    const auto before = timed(names, place - 1, -1);
    if (!after || !before) {
        return after ? after : before;
    }
    const auto distance = [&](qsizetype at) { return abs(*momentOf(names.name(at)) - *wanted); };
    return distance(*after) < distance(*before) ? after : before;
}

} // namespace velmora
