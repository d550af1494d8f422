#include "HealthRules.h"

#include <algorithm>
#include <cstdlib>

namespace velmora::test {
namespace {

constexpr std::size_t kIntervals = 12;
constexpr std::size_t kLatest = 64;
constexpr qint64 kLeastPatience = 900;

} // namespace

std::optional<qint64> RuleCamera::usual() const
{
    std::vector<qint64> sorted(intervals.begin(), intervals.end());
    std::ranges::sort(sorted);
    return sorted.empty() ? std::nullopt : std::optional(sorted[(sorted.size() - 1) / 2]);
}

void HealthRules::put(CameraAddress camera, const QString &url)
{
    if (url.isEmpty()) {
        cameras.erase(camera);
    } else if (cameras[camera].url != url) {
        cameras[camera] = RuleCamera();
        cameras[camera].url = url;
    }
}

void HealthRules::count(CameraAddress camera, std::vector<qint64> dates)
{
    RuleCamera &known = cameras.at(camera);
    known.isCounted = true;
    known.images = static_cast<qint64>(dates.size());
    std::ranges::sort(dates);
    if (!known.newest && !dates.empty()) {
        known.newest = dates.back();
        const std::size_t left = dates.size() > kLatest ? dates.size() - kLatest : 0;
        for (std::size_t i = left + 1; i < dates.size(); ++i) {
            if (dates[i] > dates[i - 1]) {
                known.intervals.push_back(dates[i] - dates[i - 1]);
            }
        }
        while (known.intervals.size() > kIntervals) {
            known.intervals.pop_front();
        }
    }
}

// Of rows with the same address, what comes for one has come for all.
void HealthRules::store(CameraAddress camera)
{
    answer(camera);
    for (auto &[each, known] : cameras) {
        if (known.url != cameras.at(camera).url) {
            continue;
        }
        if (known.newest && now > *known.newest) {
            known.intervals.push_back(now - *known.newest);
            if (known.intervals.size() > kIntervals) {
                known.intervals.pop_front();
            }
        }
        known.newest = now;
        ++known.images;
        known.isLate = false;
        known.quiet = 0;
        known.asked.reset();
        askedNow_.erase(each);
    }
}

void HealthRules::answer(CameraAddress camera)
{
    cameras.at(camera).failures = 0;
    cameras.at(camera).failure.clear();
}

void HealthRules::fail(CameraAddress camera, const QString &reason)
{
    RuleCamera &known = cameras.at(camera);
    if (known.failures == 0) {
        known.failedSince = now;
    }
    if (known.failures == 0 && !known.newest) {
        known.quiet = 0;
    }
    ++known.failures;
    known.failure = reason;
}

void HealthRules::beginRound()
{
    askedNow_.clear();
    for (const auto &[camera, known] : cameras) {
        askedNow_[camera] = known.quiet;
    }
}

void HealthRules::endRound()
{
    for (const auto &[camera, quiet] : askedNow_) {
        cameras.at(camera).asked = quiet;
    }
    isTrusted = true;
}

void HealthRules::standStill(qint64 seconds)
{
    now += seconds;
}

void HealthRules::pass(qint64 seconds)
{
    now += seconds;
    for (auto &[camera, known] : cameras) {
        known.quiet += seconds;
        if (isOff[camera.group] && isTrusted) {
            known.quiet = 0;
            known.asked.reset();
        }
    }
}

int HealthRules::mustBeLate(CameraAddress camera) const
{
    const RuleCamera &known = cameras.at(camera);
    const auto never = isNever.find(camera);
    const bool canTell = known.usual() || known.failures > 0;
    if ((never != isNever.end() && never->second) || !isTrusted || !canTell) {
        return 0;
    }
    const qint64 patience = std::max(kLeastPatience, times * known.usual().value_or(0));
    const auto quiet = known.images > 0 ? known.asked : std::optional(known.quiet);
    if (!quiet || *quiet < patience - slack) {
        return 0;
    }
    return *quiet > patience + slack ? 1 : -1;
}

} // namespace velmora::test
