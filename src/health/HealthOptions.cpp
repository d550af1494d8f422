#include "health/HealthOptions.h"

#include <algorithm>

namespace velmora {
namespace {

const QString kSection = QStringLiteral("Health");
constexpr int kUsualTimes = 10;
constexpr int kMostTimes = 100'000;
constexpr qint64 kMegabyte = 1'000'000;
constexpr qint64 kUsualLimit = 1000 * kMegabyte;
constexpr qint64 kUsualPart = 50;

QString keyOf(HealthChoice choice)
{
    switch (choice) {
    case HealthChoice::Notices:
        return QStringLiteral("Notices");
    case HealthChoice::Mail:
        return QStringLiteral("Mail");
    case HealthChoice::DeleteOldest:
        return QStringLiteral("DeleteOldest");
    case HealthChoice::StopWhenFull:
        break;
    }
    return QStringLiteral("StopWhenFull");
}

QString neverKey(CameraAddress camera)
{
    return QStringLiteral("Never%1%2").arg(camera.group).arg(camera.row);
}

} // namespace

bool HealthOptions::isOn(HealthChoice choice) const
{
    const QString stored = settings_.read(kSection, keyOf(choice));
    return stored.isEmpty() ? choice == HealthChoice::Notices
                            : settings_.number(kSection, keyOf(choice)) != 0;
}

void HealthOptions::set(HealthChoice choice, bool on) const
{
    settings_.write(kSection, keyOf(choice), on ? 1 : 0);
}

bool HealthOptions::isNever(CameraAddress camera) const
{
    return settings_.number(kSection, neverKey(camera)) != 0;
}

void HealthOptions::setNever(CameraAddress camera, bool never) const
{
    settings_.write(kSection, neverKey(camera), never ? 1 : 0);
}

LateRule HealthOptions::rule(CameraAddress camera) const
{
    LateRule rule;
    const double times = settings_.number(kSection, u"LateTimes");
    rule.times = times >= 1 ? static_cast<int>(std::min<double>(times, kMostTimes)) : kUsualTimes;
    if (isNever(camera)) {
        rule.times = 0;
    }
    return rule;
}

qint64 HealthOptions::limitBytes(qint64 diskBytes) const
{
    const double megabytes = settings_.number(kSection, u"LimitMB");
    return megabytes >= 1 ? static_cast<qint64>(std::min(megabytes, 1e9)) * kMegabyte
                          : std::min(kUsualLimit, diskBytes / kUsualPart);
}

} // namespace velmora
