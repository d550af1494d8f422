#include "health/HealthOptions.h"

#include "settings/Keys.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr int kUsualTimes = 10;
constexpr int kMostTimes = 100'000;
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

QString neverKey(CameraAddress camera)
{
    return QStringLiteral("%1%2%3").arg(keys::kNever).arg(camera.group).arg(camera.row);
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
    const QString key = neverKey(camera);
    return SwitchKey{keys::kHealth, key}.read(settings_);
}

void HealthOptions::setNever(CameraAddress camera, bool never) const
{
    const QString key = neverKey(camera);
    SwitchKey{keys::kHealth, key}.write(settings_, never);
}

LateRule HealthOptions::rule(CameraAddress camera) const
{
    LateRule rule;
    const double times = keys::kLateTimes.read(settings_);
    rule.times = times >= 1 ? static_cast<int>(std::min<double>(times, kMostTimes)) : kUsualTimes;
    if (isNever(camera)) {
        rule.times = 0;
    }
    return rule;
}

qint64 HealthOptions::limitBytes(qint64 diskBytes) const
{
    const double megabytes = keys::kLimitMegabytes.read(settings_);
    return megabytes >= 1 ? static_cast<qint64>(std::min(megabytes, 1e9)) * kMegabyte
                          : std::min(kUsualLimit, diskBytes / kUsualPart);
}

} // namespace velmora
