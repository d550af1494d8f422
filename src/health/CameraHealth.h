// What is known about how a camera delivers: pure figures, without clock or disk.
#pragma once

#include "cameras/CameraAddress.h"

#include <QJsonObject>
#include <QString>

#include <array>
#include <chrono>
#include <deque>
#include <optional>

namespace velmora {

/// Universal time (UTC).
using Moment = std::chrono::sys_seconds;

inline constexpr int kBars = 24;

/// The images of an hour.
struct HourBar
{
    int images = 0;
    qint64 bytes = 0;
};

/// The record of one camera: a value whose size does not grow with the number of images. In the
/// running program HealthBook owns the records and alone changes them; HealthCount makes one from a
/// folder, and the command line reads those in the file. It promises figures that follow from what
/// was entered and the moment passed in, never from a clock.
class CameraHealth
{
public:
    /// An image arrived, or was found to have arrived.
    void addImage(Moment when, qint64 size);

    /// The camera answered, with an image or that it has none that is new.
    void succeed();

    /// The camera gave no image.
    void fail(Moment when, const QString &reason);

    /// What arrived in an hour, as counted.
    void setHour(Moment within, HourBar counted);

    /// Replaces the number and size of its images by what was counted in the folder, and adds what
    /// was counted to what is known of when they came.
    void takeCount(const CameraHealth &counted);

    /// The median of the times between its latest images. Nothing before the second image.
    [[nodiscard]] std::optional<std::chrono::seconds> usualInterval() const;

    /// The last 24 hours, oldest first.
    [[nodiscard]] std::array<HourBar, kBars> bars(Moment now) const;
    [[nodiscard]] int imagesADay(Moment now) const;

    /// What a day brings at the rate of the last 24 hours, or of the part of them since its first
    /// image then.
    [[nodiscard]] qint64 bytesADay(Moment now) const;

    /// Since when nothing new has come: its newest image, or else its first failure; nothing if
    /// neither is known.
    [[nodiscard]] std::optional<Moment> quietSince() const;

    [[nodiscard]] QJsonObject toJson() const;
    [[nodiscard]] static CameraHealth fromJson(const QJsonObject &object);

    QString folder; // name of the camera's folder: a different address is a different camera
    bool isCounted = false; // nothing is left to count in the folder
    std::optional<Moment> newest;
    qint64 images = 0;
    qint64 bytes = 0; // approximate where they were counted
    QString failure;  // of the last attempt; empty when it succeeded
    std::optional<Moment> failedSince;
    int failures = 0; // in a row
    std::optional<Moment> lateSince;

private:
    [[nodiscard]] HourBar &bar(qint64 hour);
    [[nodiscard]] qint64 secondsWithImages(Moment now) const;
    void forgetHoursAfter(Moment when);
    void takeHours(const CameraHealth &counted);
    void takeIntervals(const CameraHealth &counted);
    [[nodiscard]] std::optional<Moment> knownSince() const;

    struct Hour
    {
        qint64 hour = 0; // since 1970
        HourBar bar;
    };

    std::deque<qint64> intervals_; // seconds, latest last
    std::deque<Hour> hours_;
};

using CameraHealths = PerCamera<CameraHealth>;

/// What all cameras together deliver in a day; a folder that several of them have counts once.
[[nodiscard]] qint64 bytesADay(const CameraHealths &cameras, Moment now);

/// When a camera counts as late.
struct LateRule
{
    int times = 10; // its usual interval; 0: never
    std::chrono::seconds least = std::chrono::minutes{15};

    /// How long a camera may be quiet; nothing when that cannot be told.
    [[nodiscard]] std::optional<std::chrono::seconds> patience(const CameraHealth &camera) const;
};

/// "3 min", "2 h 5 min", "10 days".
[[nodiscard]] QString ageText(std::chrono::seconds age);

} // namespace velmora
