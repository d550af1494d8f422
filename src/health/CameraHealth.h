// What is known of how a camera delivers: pure figures, without clock or disk.
#pragma once

#include <QJsonObject>
#include <QString>

#include <array>
#include <chrono>
#include <deque>
#include <optional>

namespace velmora {

/// Universal time as the wall has it.
using Moment = std::chrono::sys_seconds;

inline constexpr int kBars = 24;

/// An hour's images.
struct HourBar
{
    int images = 0;
    qint64 bytes = 0;
};

class CameraHealth
{
public:
    /// An image came, or was found to have come.
    void addImage(Moment when, qint64 size);

    /// The camera gave none.
    void fail(Moment when, const QString &reason);

    /// What came in an hour, as it was counted.
    void setHour(Moment within, HourBar counted);

    /// What was counted in the folder takes the place of what was known of its images.
    void takeCount(const CameraHealth &counted);

    /// The times between its latest images: the middle one. Nothing before the second image.
    [[nodiscard]] std::optional<std::chrono::seconds> usualInterval() const;

    /// The last 24 hours, the oldest first.
    [[nodiscard]] std::array<HourBar, kBars> bars(Moment now) const;
    [[nodiscard]] int imagesADay(Moment now) const;
    [[nodiscard]] qint64 bytesADay(Moment now) const;

    /// Since when nothing new came: its newest image, or else its first failure; nothing for a
    /// camera of which neither is known.
    [[nodiscard]] std::optional<Moment> quietSince() const;

    [[nodiscard]] QJsonObject toJson() const;
    [[nodiscard]] static CameraHealth fromJson(const QJsonObject &object);

    QString folder; // name of the camera's folder: another address is another camera
    std::optional<Moment> newest;
    qint64 images = 0;
    qint64 bytes = 0; // about, where they were counted
    QString failure;  // of the last try; empty when it went well
    std::optional<Moment> failedSince;
    int failures = 0; // in a row
    std::optional<Moment> lateSince;

private:
    [[nodiscard]] HourBar &bar(qint64 hour);
    void forgetHoursAfter(Moment when);

    struct Hour
    {
        qint64 hour = 0; // since 1970
        HourBar bar;
    };

    std::deque<qint64> intervals_; // seconds, the latest last
    std::deque<Hour> hours_;
};

/// When a camera counts as late.
struct LateRule
{
    int times = 10; // its usual interval; 0: never
    std::chrono::seconds least = std::chrono::minutes{15};

    /// How long a camera may be quiet; nothing when nobody can say.
    [[nodiscard]] std::optional<std::chrono::seconds> patience(const CameraHealth &camera) const;
};

/// "3 min", "2 h 5 min", "10 days".
[[nodiscard]] QString ageText(std::chrono::seconds age);

} // namespace velmora
