#include "health/CameraHealth.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <algorithm>
#include <numeric>
#include <ranges>
#include <set>
#include <vector>

namespace velmora {
namespace {

using namespace std::chrono;

constexpr std::size_t kIntervals = 12;
constexpr qint64 kHourSeconds = 3600;
constexpr qint64 kDaySeconds = kBars * kHourSeconds;
constexpr Moment kFirstMoment{sys_days(year(1) / January / 1)};
constexpr Moment kLastMoment{sys_days(year(9999) / December / 31)};
constexpr qint64 kLongestInterval = kDaySeconds * 366 * 100;
constexpr qint64 kMostWhole = qint64{1} << 53;         // what a number in JSON holds
constexpr qint64 kMostAnHour = 10'000'000;             // images
constexpr qint64 kMostInARow = 1'000'000'000;          // attempts: thirty years of one a second
constexpr qint64 kMostBytesADay = 100'000'000'000'000; // times the seconds of a day: still a number

qint64 hourOf(Moment when)
{
    return floor<hours>(when).time_since_epoch().count();
}

QJsonValue momentJson(const std::optional<Moment> &when)
{
    return when ? QJsonValue(static_cast<qint64>(when->time_since_epoch().count())) : QJsonValue();
}

// A damaged file may hold any number: what cannot be is taken for missing.
std::optional<qint64> numberFrom(const QJsonValue &value, qint64 least, qint64 most)
{
    const qint64 number = value.toInteger(least - 1);
    return number >= least && number <= most ? std::optional(number) : std::nullopt;
}

qint64 countFrom(const QJsonValue &value, qint64 most)
{
    return numberFrom(value, 0, most).value_or(0);
}

std::optional<Moment> momentFrom(const QJsonValue &value)
{
    const auto since1970 = numberFrom(value, kFirstMoment.time_since_epoch().count(),
                                      kLastMoment.time_since_epoch().count());
    return since1970 ? std::optional(Moment(seconds(*since1970))) : std::nullopt;
}

QString tr(const char *text)
{
    return QCoreApplication::translate("CameraHealth", text);
}

} // namespace

HourBar &CameraHealth::bar(qint64 hour)
{
    const auto at = std::ranges::lower_bound(hours_, hour, {}, &Hour::hour);
    const auto found = at != hours_.end() && at->hour == hour ? at : hours_.insert(at, {hour, {}});
    return found->bar;
}

// They come from a clock that was wrong and has been set back, and would take the place of later
// ones.
void CameraHealth::forgetHoursAfter(Moment when)
{
    while (!hours_.empty() && hours_.back().hour > hourOf(when)) {
        hours_.pop_back();
    }
}

void CameraHealth::setHour(Moment within, HourBar counted)
{
    bar(hourOf(within)) = counted;
}

void CameraHealth::addImage(Moment when, qint64 size)
{
    if (newest && when > *newest) {
        intervals_.push_back((when - *newest).count());
        if (intervals_.size() > kIntervals) {
            intervals_.pop_front();
        }
    }
    forgetHoursAfter(when);
    newest = when;
    ++images;
    bytes += size;
    HourBar &now = bar(hourOf(when));
    ++now.images;
    now.bytes += size;
    while (hours_.size() > kBars) {
        hours_.pop_front();
    }
}

void CameraHealth::succeed()
{
    failure.clear();
    failedSince.reset();
    failures = 0;
}

void CameraHealth::fail(Moment when, const QString &reason)
{
    failure = reason;
    failedSince = failedSince.value_or(when);
    ++failures;
}

void CameraHealth::takeCount(const CameraHealth &counted)
{
    images = counted.images;
    bytes = counted.bytes;
    newest = newest ? newest : counted.newest;
    takeHours(counted);
    takeIntervals(counted);
}

// What came while the folder was counted may or may not be in the count. What is dated later comes
// from a clock that was wrong.
void CameraHealth::takeHours(const CameraHealth &counted)
{
    for (const Hour &hour : counted.hours_) {
        HourBar &known = bar(hour.hour);
        if (hour.bar.images > known.images) {
            known = hour.bar;
        }
    }
    if (newest) {
        forgetHoursAfter(*newest);
    }
    while (hours_.size() > kBars) {
        hours_.pop_front();
    }
}

// Only what is older than what is known, which the folder shows once more, with gaps where images
// were deleted.
void CameraHealth::takeIntervals(const CameraHealth &counted)
{
    const std::optional<Moment> known = knownSince();
    Moment end = counted.newest.value_or(Moment());
    for (const qint64 interval : counted.intervals_ | std::views::reverse) {
        if (intervals_.size() < kIntervals && (!known || end <= *known)) {
            intervals_.push_front(interval);
        }
        end -= seconds(interval);
    }
}

// Nothing before the second image.
std::optional<Moment> CameraHealth::knownSince() const
{
    if (intervals_.empty() || !newest) {
        return std::nullopt;
    }
    return *newest - seconds(std::accumulate(intervals_.begin(), intervals_.end(), qint64{0}));
}

std::optional<seconds> CameraHealth::usualInterval() const
{
    if (intervals_.empty()) {
        return std::nullopt;
    }
    std::vector<qint64> sorted(intervals_.begin(), intervals_.end());
    std::ranges::sort(sorted);
    return seconds(sorted[(sorted.size() - 1) / 2]);
}

std::array<HourBar, kBars> CameraHealth::bars(Moment now) const
{
    std::array<HourBar, kBars> bars{};
    const qint64 first = hourOf(now) - kBars + 1;
    for (const Hour &hour : hours_) {
        if (hour.hour >= first && hour.hour < first + kBars) {
            bars.at(static_cast<std::size_t>(hour.hour - first)) = hour.bar;
        }
    }
    return bars;
}

int CameraHealth::imagesADay(Moment now) const
{
    int sum = 0;
    for (const HourBar &hour : bars(now)) {
        sum += hour.images;
    }
    return sum;
}

qint64 CameraHealth::bytesADay(Moment now) const
{
    qint64 sum = 0;
    for (const HourBar &hour : bars(now)) {
        sum = std::min(kMostBytesADay, sum + std::min(kMostBytesADay, hour.bytes));
    }
    const qint64 seconds = std::max<qint64>(1, secondsWithImages(now));
    return std::min(kMostBytesADay, sum * kDaySeconds / seconds);
}

// Since the first image of the last 24 hours. When in its hour that one came is not known exactly:
// the usual interval tells, as each image stands for the time up to the next.
qint64 CameraHealth::secondsWithImages(Moment now) const
{
    const auto bars = this->bars(now);
    const auto *const first =
        std::ranges::find_if(bars, [](const HourBar &hour) { return hour.images > 0; });
    if (first == bars.begin() || first == bars.end()) {
        return kDaySeconds;
    }
    const qint64 at = now.time_since_epoch().count();
    const qint64 begin = (hourOf(now) - (bars.end() - first) + 1) * kHourSeconds;
    const qint64 end = std::min(begin + kHourSeconds, at);
    const qint64 span = usualInterval().value_or(seconds(kHourSeconds)).count() * first->images;
    return at - std::max(begin, end - span);
}

qint64 bytesADay(const CameraHealths &cameras, Moment now)
{
    qint64 sum = 0;
    std::set<QString> folders;
    for (const CameraHealth &camera : cameras) {
        if (folders.insert(camera.folder).second) {
            sum += camera.bytesADay(now);
        }
    }
    return sum;
}

std::optional<Moment> CameraHealth::quietSince() const
{
    return newest ? newest : failedSince;
}

QJsonObject CameraHealth::toJson() const
{
    QJsonArray intervals;
    for (const qint64 interval : intervals_) {
        intervals.append(interval);
    }
    QJsonArray hourly;
    for (const Hour &hour : hours_) {
        hourly.append(QJsonArray{hour.hour, hour.bar.images, hour.bar.bytes});
    }
    return {{QStringLiteral("folder"), folder},
            {QStringLiteral("counted"), isCounted},
            {QStringLiteral("newest"), momentJson(newest)},
            {QStringLiteral("images"), images},
            {QStringLiteral("bytes"), bytes},
            {QStringLiteral("failure"), failure},
            {QStringLiteral("failedSince"), momentJson(failedSince)},
            {QStringLiteral("failures"), failures},
            {QStringLiteral("lateSince"), momentJson(lateSince)},
            {QStringLiteral("intervals"), intervals},
            {QStringLiteral("hours"), hourly}};
}

CameraHealth CameraHealth::fromJson(const QJsonObject &object)
{
    CameraHealth camera;
    camera.folder = object[QStringLiteral("folder")].toString();
    camera.isCounted = object[QStringLiteral("counted")].toBool();
    camera.newest = momentFrom(object[QStringLiteral("newest")]);
    camera.images = countFrom(object[QStringLiteral("images")], kMostWhole);
    camera.bytes = countFrom(object[QStringLiteral("bytes")], kMostWhole);
    camera.failure = object[QStringLiteral("failure")].toString();
    camera.failedSince = momentFrom(object[QStringLiteral("failedSince")]);
    camera.failures = static_cast<int>(countFrom(object[QStringLiteral("failures")], kMostInARow));
    camera.lateSince = momentFrom(object[QStringLiteral("lateSince")]);
    const QJsonArray intervals = object[QStringLiteral("intervals")].toArray();
    for (const auto &interval : intervals) {
        const qint64 length = countFrom(interval, kLongestInterval);
        if (camera.intervals_.size() < kIntervals && length > 0) {
            camera.intervals_.push_back(length);
        }
    }
    const QJsonArray hourly = object[QStringLiteral("hours")].toArray();
    for (const auto &entry : hourly) {
        const QJsonArray hour = entry.toArray();
        const auto number = numberFrom(hour.at(0), hourOf(kFirstMoment), hourOf(kLastMoment));
        if (number && camera.hours_.size() < kBars) {
            camera.bar(*number) = {static_cast<int>(countFrom(hour.at(1), kMostAnHour)),
                                   countFrom(hour.at(2), kMostBytesADay)};
        }
    }
    return camera;
}

std::optional<seconds> LateRule::patience(const CameraHealth &camera) const
{
    if (times <= 0 || (!camera.usualInterval() && camera.failures == 0)) {
        return std::nullopt;
    }
    return std::max(least, times * camera.usualInterval().value_or(seconds(0)));
}

QString ageText(seconds age)
{
    const auto minute = duration_cast<minutes>(age).count();
    constexpr qint64 kHour = 60;
    constexpr qint64 kDay = 24 * kHour;
    if (minute < 1) {
        return tr("%1 s").arg(std::max<qint64>(0, age.count()));
    }
    if (minute < kHour) {
        return tr("%1 min").arg(minute);
    }
    if (minute < 2 * kDay) {
        return tr("%1 h %2 min").arg(minute / kHour).arg(minute % kHour);
    }
    return tr("%1 days").arg(minute / kDay);
}

} // namespace velmora
