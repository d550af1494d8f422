// A capture with everything that watches how its cameras deliver, on a clock that the test moves.
#pragma once

#include "../capture/CaptureTest.h"
#include "health/HealthEngine.h"
#include "support/MailDouble.h"

namespace velmora::test {

inline constexpr CameraAddress kOne{0, 1};
inline constexpr CameraAddress kTwo{0, 2};

/// The folders are under C:\in; nothing is watched until start().
class HealthTest : public CaptureTest
{
protected:
    HealthTest()
    {
        QObject::connect(&health_, &HealthEngine::noticed, &health_,
                         [this](const QString &text) { notices_.append(text); });
    }

    ~HealthTest() override
    {
        house_.scheduler.giveUp();
        house_.scope.requestStop();
        clock_.advance(std::chrono::seconds{1});
    }

    HealthTest(const HealthTest &) = delete;
    HealthTest &operator=(const HealthTest &) = delete;
    HealthTest(HealthTest &&) = delete;
    HealthTest &operator=(HealthTest &&) = delete;

    void start()
    {
        health_.start();
        clock_.advance(std::chrono::milliseconds{0});
    }

    /// The camera delivers an image a minute for some minutes; then its pass ends.
    void deliver(CameraAddress camera, int minutes)
    {
        for (int i = 0; i < minutes; ++i) {
            book_.addImage(camera, QStringLiteral("20060307_1405090714.jpg"));
            clock_.advance(std::chrono::minutes{1});
        }
        watch_.trust();
    }

    [[nodiscard]] bool isLate(CameraAddress camera) const
    {
        return book_.camera(camera).lateSince.has_value();
    }

    MailDouble mail_;
    HealthEngine health_{house_.engine, mail_};
    HealthBook &book_ = health_.book();
    OldestFirst &oldest_ = health_.oldest();
    HealthWatch &watch_ = health_.watch();
    QStringList notices_;
};

} // namespace velmora::test
