// A capture with everything that watches how its cameras deliver, on a clock that the test moves.
#pragma once

#include "../capture/CaptureTest.h"
#include "health/HealthWatch.h"

namespace velmora::test {

inline constexpr CameraAddress kOne{0, 1};
inline constexpr CameraAddress kTwo{0, 2};

/// The folders are under C:\in; nothing is watched until watch().
class HealthTest : public CaptureTest
{
protected:
    HealthTest()
    {
        QObject::connect(&house_.store, &ImageStore::imageStored, &book_, &HealthBook::addImage);
        QObject::connect(&house_.store, &ImageStore::cameraFailed, &book_, &HealthBook::addFailure);
        QObject::connect(&watch_, &HealthWatch::noticed, &watch_,
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
        book_.load();
        house_.scope.launch(watch_.run(house_.scope.stopToken()));
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

    HealthBook book_{house_.table, house_.storage, clock_, house_.scope};
    OldestFirst oldest_{house_.table, house_.storage, clock_, house_.scope};
    HealthWatch watch_{house_.storage, clock_, book_, house_.scheduler, oldest_};
    QStringList notices_;
};

} // namespace velmora::test
