// What the user has chosen about notices and room on the disk; the section "Health" of the
// settings.
#pragma once

#include "cameras/CameraAddress.h"
#include "health/CameraHealth.h"
#include "settings/SettingsFile.h"

namespace velmora {

enum class HealthChoice {
    Notices,      // on the desktop; on unless switched off
    Mail,         // through the server of the alarm's mail
    DeleteOldest, // when the disk is nearly full
    StopWhenFull  // the capture, before the disk is full
};

class HealthOptions
{
public:
    explicit HealthOptions(const SettingsFile &settings)
        : settings_(settings)
    {
    }

    [[nodiscard]] bool isOn(HealthChoice choice) const;
    void set(HealthChoice choice, bool on) const;

    /// How a camera is judged; never late, if that was chosen for it.
    [[nodiscard]] LateRule rule(CameraAddress camera) const;
    void setNever(CameraAddress camera, bool never) const;
    [[nodiscard]] bool isNever(CameraAddress camera) const;

    /// How many times its usual interval a camera may be quiet.
    [[nodiscard]] int lateTimes() const;
    void setLateTimes(int times) const;

    /// The number that limitBytes() goes by; 0 while none is set.
    [[nodiscard]] int limitMegabytes() const;
    void setLimitMegabytes(int megabytes) const;

    static constexpr int kMostTimes = 100'000;
    static constexpr int kMostMegabytes = 1'000'000'000;

    /// Free bytes below which the disk counts as nearly full: the number of megabytes set, else 1
    /// GB or a fiftieth of the disk, whichever is less.
    [[nodiscard]] qint64 limitBytes(qint64 diskBytes) const;

private:
    const SettingsFile &settings_;
};

} // namespace velmora
