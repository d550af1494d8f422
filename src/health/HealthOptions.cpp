#include "health/HealthOptions.h"

#include "cameras/CameraChoices.h"
#include "settings/Keys.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr int kUsualTimes = 10;
constexpr qint64 kMegabyte = 1'000'000;
constexpr qint64 kUsualLimit = 1000 * kMegabyte;
constexpr qint64 kUsualPart = 50;

const SwitchKey &keyOf(HealthChoice choice)
{
    switch (choice) {
    case HealthChoice::Notices:
        return keys::kNotices;
    case HealthChoice::Mail:
        return keys::kNoticeMail;
    case HealthChoice::DeleteOldest:
        return keys::kDeleteOldest;
    case HealthChoice::StopWhenFull:
        break;
    }
    return keys::kStopWhenFull;
}

} // namespace

bool HealthOptions::isOn(HealthChoice choice) const
{
    return keyOf(choice).read(settings_);
}

void HealthOptions::set(HealthChoice choice, bool on) const
{
    keyOf(choice).write(settings_, on);
}

bool HealthOptions::isNever(CameraAddress camera) const
{
    const QString key = neverLateKey(camera);
    return SwitchKey{keys::kHealth, key}.read(settings_);
}

void HealthOptions::setNever(CameraAddress camera, bool never) const
{
    const QString key = neverLateKey(camera);
    SwitchKey{keys::kHealth, key}.write(settings_, never);
}

int HealthOptions::lateTimes() const
{
    const double times = keys::kLateTimes.read(settings_);
    return times >= 1 ? static_cast<int>(std::min<double>(times, kMostTimes)) : kUsualTimes;
}

void HealthOptions::setLateTimes(int times) const
{
    keys::kLateTimes.write(settings_, times);
}

int HealthOptions::limitMegabytes() const
{
    const double megabytes = keys::kLimitMegabytes.read(settings_);
    return megabytes >= 1 ? static_cast<int>(std::min<double>(megabytes, kMostMegabytes)) : 0;
}

void HealthOptions::setLimitMegabytes(int megabytes) const
{
    keys::kLimitMegabytes.write(settings_, megabytes);
}

LateRule HealthOptions::rule(CameraAddress camera) const
{
    LateRule rule;
    rule.times = isNever(camera) ? 0 : lateTimes();
    return rule;
}

qint64 HealthOptions::limitBytes(qint64 diskBytes) const
{
    const qint64 megabytes = limitMegabytes();
    return megabytes > 0 ? megabytes * kMegabyte : std::min(kUsualLimit, diskBytes / kUsualPart);
}

} // namespace velmora
