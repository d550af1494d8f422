// A capture without a network, on a clock that the test moves.
#pragma once

#include "support/BusyClock.h"
#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"
#include "support/LoopbackCameraAnswers.h"

#include <gtest/gtest.h>

namespace velmora::test {

inline const QString kLastModified = QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT");
inline const QString kLastModifiedStored = QStringLiteral("07/03/2006 14:05:09");

/// For a picture with that date, fetched when the fake clock starts.
inline const QString kImageName = QStringLiteral("20060307_1405090714.jpg");

inline const QString kRed = QStringLiteral("255");
inline const QString kGreen = QStringLiteral("65280");

inline ScriptedReply goodReply(const QString &lastModified = kLastModified, qsizetype size = 2000)
{
    return {jpeg(size), lastModified, QStringLiteral("image/jpeg"), {}, {}};
}

inline ScriptedReply delayedReply(std::chrono::milliseconds delay)
{
    ScriptedReply reply = goodReply();
    reply.delay = delay;
    return reply;
}

inline ScriptedReply failedReply()
{
    return {{}, {}, {}, {}, QStringLiteral("the camera is out")};
}

/// Whether the engine's own work takes time, by the busy clock.
enum class EngineWork { TakesNoTime, TakesTime };

/// The log is off, as it usually is: what a turn stores is stored together.
class CaptureTest : public testing::Test
{
protected:
    /// Adds a camera with an address of its own, in a group that is switched on.
    void add(CameraAddress camera, const ScriptedReply &reply = goodReply())
    {
        house_.addCamera(camera, cameraUrl(camera));
        source_.answer(cameraUrl(camera), reply);
    }

    /// Number of fetches so far.
    [[nodiscard]] qsizetype fetches() const { return source_.requested().size(); }

    CaptureTest() { house_.log.setOn(false); }

    explicit CaptureTest(EngineWork work)
        : house_(source_, clock_,
                 work == EngineWork::TakesTime ? static_cast<Clock &>(busy_) : clock_)
    {
        house_.log.setOn(false);
    }

    FakeClock clock_;
    BusyClock busy_{clock_};
    ScriptedSource source_{clock_};
    CaptureHouse house_{source_, clock_};
};

} // namespace velmora::test
