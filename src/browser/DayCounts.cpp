#include "browser/DayCounts.h"

#include "base/DateText.h"

#include <cstdlib>

namespace velmora {
namespace {

using namespace std::chrono;

constexpr int kMostSteps = 64; // past names that hold no time

// A key that sorts after every name that begins with a text: no character is written with that
// byte.
QByteArray behind(const QByteArray &text)
{
    return text + '\xff';
}

// The first position from `from` on, in steps of `step`, whose name holds a time.
std::optional<qsizetype> timed(const ImageNames &names, qsizetype from, qsizetype step)
{
    for (int tries = 0; tries < kMostSteps && from >= 0 && from < names.count(); ++tries) {
        if (momentOfName(names.name(from))) {
            return from;
        }
        from += step;
    }
    return std::nullopt;
}

} // namespace

std::optional<int> hourOfName(QByteArrayView name)
{
    const auto moment = momentOfName(name);
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
        const auto day = dayOfName(name);
        if (!day) {
            ++at;
            continue;
        }
        const qsizetype end = names.countBefore(behind(name.first(kDayLength)));
        days.push_back({*day, {at, end - at}});
        at = std::max(end, at + 1);
    }
    return days;
}

ImageRun countHour(const ImageNames &names, year_month_day day, int hour)
{
    const QByteArray text = dayKey(day) + '_' + twoDigits(hour).toLatin1();
    const qsizetype first = names.countBefore(text);
    return {first, names.countBefore(behind(text)) - first};
}

HourCounts countHours(const ImageNames &names, year_month_day day)
{
    HourCounts hours;
    for (int hour = 0; hour < kHoursOfDay; ++hour) {
        hours.at(static_cast<std::size_t>(hour)) = countHour(names, day, hour);
    }
    return hours;
}

std::optional<qsizetype> nearestTo(const ImageNames &names, QByteArrayView moment)
{
    const auto wanted = momentOfName(moment);
    if (!wanted) {
        return std::nullopt;
    }
    const qsizetype place = names.countBefore(moment);
    const auto after = timed(names, place, 1);
    const auto before = timed(names, place - 1, -1);
    if (!after || !before) {
        return after ? after : before;
    }
    const auto distance = [&](qsizetype at) {
        return abs(*momentOfName(names.name(at)) - *wanted);
    };
    return distance(*after) < distance(*before) ? after : before;
}

} // namespace velmora
