// How the cameras deliver, by the rules alone: it is told what each of them gives and in which time
// something could have come, and knows nothing of the program's own records.
#pragma once

#include "cameras/CameraAddress.h"

#include <QString>

#include <deque>
#include <map>
#include <optional>
#include <vector>

namespace velmora::test {

/// Times are seconds; moments are in universal time.
struct RuleCamera
{
    QString url;
    std::optional<qint64> newest;
    std::deque<qint64> intervals;
    qint64 images = 0;
    bool isCounted = false;
    int failures = 0;
    QString failure;
    qint64 failedSince = 0;
    bool isLate = false;

    qint64 quiet = 0;            // in which something could have come, and nothing did
    std::optional<qint64> asked; // how quiet it was when the last round of ticks asked it

    [[nodiscard]] std::optional<qint64> usual() const;
};

class HealthRules
{
public:
    /// A camera is there with these images, by the dates of their names; none, and it is gone.
    void put(CameraAddress camera, const QString &url);

    /// The images of its folder were looked at: the dates of their names.
    void count(CameraAddress camera, std::vector<qint64> dates);

    void store(CameraAddress camera);
    void answer(CameraAddress camera);
    void fail(CameraAddress camera, const QString &reason);

    /// A pass begins, or has ended with every camera asked.
    void beginRound();
    void endRound();

    /// Nothing could come in the time that passes.
    void standStill(qint64 seconds);

    /// Time passes, at the end of which the cameras are looked at.
    void pass(qint64 seconds);

    /// Whether it must be late (1) or must not (0); -1 while it may be either, since when the
    /// program noticed what happened is not known to the second.
    [[nodiscard]] int mustBeLate(CameraAddress camera) const;

    qint64 now = 0;
    bool isTrusted = false; // a pass has asked all
    int times = 10;
    int slack = 10;
    std::map<CameraAddress, RuleCamera> cameras;
    std::map<int, bool> isOff;             // groups
    std::map<CameraAddress, bool> isNever; // late

private:
    std::map<CameraAddress, qint64> askedNow_;
};

} // namespace velmora::test
