// What is known about how a camera delivers, and when it counts as late.
#include "health/CameraHealth.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <limits>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr Moment kBegin{std::chrono::sys_days{std::chrono::year{2006} / 3 / 7} + 14h};
constexpr auto kYear = 365 * 24h;

CameraHealth delivering(int images, std::chrono::seconds apart)
{
    CameraHealth camera;
    for (int i = 0; i < images; ++i) {
        camera.addImage(kBegin + i * apart, 1000);
    }
    return camera;
}

TEST(CameraHealth, TakesTheMiddleOfTheLatestIntervalsForTheUsualOne)
{
    EXPECT_FALSE(delivering(1, 1min).usualInterval());
    CameraHealth camera = delivering(9, 1min);
    camera.addImage(kBegin + 5h, 1000);
    EXPECT_EQ(camera.usualInterval(), 1min);
}

TEST(CameraHealth, FollowsAnotherInterval)
{
    CameraHealth camera = delivering(30, 1min);
    for (int i = 1; i <= 12; ++i) {
        camera.addImage(kBegin + 30min + i * 1h, 1000);
    }
    EXPECT_EQ(camera.usualInterval(), 1h);
}

TEST(CameraHealth, CountsTheLastDayByTheHour)
{
    CameraHealth camera = delivering(26, 1h);
    camera.addImage(kBegin + 25h + 10min, 500);
    const auto bars = camera.bars(kBegin + 25h + 20min);
    EXPECT_EQ(bars.front().images, 1);
    EXPECT_EQ(bars.back().images, 2);
    EXPECT_EQ(bars.back().bytes, 1500);
    EXPECT_EQ(camera.imagesADay(kBegin + 25h + 20min), 25);
    EXPECT_EQ(camera.bytesADay(kBegin + 25h + 20min), 24'500);
    EXPECT_EQ(camera.imagesADay(kBegin + 60h), 0);
    EXPECT_EQ(camera.images, 27);
}

TEST(CameraHealth, AllTogetherDeliverTheSum)
{
    const CameraHealth camera = delivering(26, 1h);
    CameraHealths cameras;
    for (const CameraAddress address : {CameraAddress{0, 3}, CameraAddress{9, 9}}) {
        cameras[address] = camera;
        cameras[address].folder = QString::number(address.group);
    }
    const Moment now = kBegin + 25h + 20min;
    EXPECT_EQ(bytesADay(cameras, now), 2 * camera.bytesADay(now));
    EXPECT_GT(bytesADay(cameras, now), 0);
    EXPECT_EQ(bytesADay(CameraHealths(), now), 0);
}

TEST(CameraHealth, TakesItsRateFromTheTimeInWhichItDelivered)
{
    const CameraHealth fresh = delivering(6, 1min); // 1000 bytes each
    EXPECT_EQ(fresh.bytesADay(kBegin + 6min), 1'440'000);
    EXPECT_GE(fresh.bytesADay(kBegin + 2h), 72'000) << "nothing came since";
    EXPECT_LE(fresh.bytesADay(kBegin + 2h), 144'000);
    const CameraHealth known = delivering(180, 1min);
    EXPECT_EQ(known.bytesADay(kBegin + 3h), 1'440'000);
    EXPECT_EQ(CameraHealth().bytesADay(kBegin), 0);
}

TEST(CameraHealth, CountsFailuresInARowSinceTheFirst)
{
    CameraHealth camera = delivering(2, 1min);
    camera.fail(kBegin + 2min, QStringLiteral("no answer"));
    camera.fail(kBegin + 3min, QStringLiteral("time-out"));
    EXPECT_EQ(camera.failures, 2);
    EXPECT_EQ(camera.failure, QStringLiteral("time-out"));
    EXPECT_EQ(camera.failedSince, kBegin + 2min);
    camera.succeed();
    EXPECT_EQ(camera.failures, 0);
    EXPECT_EQ(camera.failure, QString());
    EXPECT_FALSE(camera.failedSince);
}

TEST(CameraHealth, GoesOnCountingWhenTheClockIsSetBackAYear)
{
    CameraHealth camera = delivering(48, 1h);
    const Moment now = kBegin - kYear;
    for (int i = 0; i < 3; ++i) {
        camera.addImage(now + i * 1min, 1000);
    }
    EXPECT_EQ(camera.newest, now + 2min);
    EXPECT_EQ(camera.imagesADay(now + 2min), 3);
    EXPECT_EQ(camera.usualInterval(), 1h);
}

TEST(CameraHealth, GoesOnCountingWhenTheClockIsSetForthAYear)
{
    CameraHealth camera = delivering(48, 1h);
    camera.addImage(kBegin + kYear, 1000);
    EXPECT_EQ(camera.newest, kBegin + kYear);
    EXPECT_EQ(camera.imagesADay(kBegin + kYear), 1);
    EXPECT_EQ(camera.usualInterval(), 1h);
}

TEST(CameraHealth, IsTheSameWhenReadAgain)
{
    CameraHealth camera = delivering(26, 1h);
    camera.folder = QStringLiteral("/a/b");
    camera.fail(kBegin + 30h, QStringLiteral("no answer"));
    camera.lateSince = kBegin + 31h;
    const CameraHealth read = CameraHealth::fromJson(camera.toJson());
    EXPECT_EQ(read.toJson(), camera.toJson());
    EXPECT_EQ(read.imagesADay(kBegin + 25h), 24);
    EXPECT_EQ(read.usualInterval(), 1h);
}

TEST(CameraHealth, TakesNothingThatCannotBe)
{
    QJsonArray hours;
    QJsonArray intervals;
    for (int i = 0; i < 1000; ++i) {
        hours.append(QJsonArray{i, i, i});
        intervals.append(-1);
    }
    const CameraHealth read =
        CameraHealth::fromJson({{QStringLiteral("newest"), QStringLiteral("yesterday")},
                                {QStringLiteral("failures"), QJsonArray()},
                                {QStringLiteral("hours"), hours},
                                {QStringLiteral("intervals"), intervals}});
    EXPECT_FALSE(read.newest);
    EXPECT_EQ(read.failures, 0);
    EXPECT_FALSE(read.usualInterval());
    EXPECT_EQ(read.toJson()[QStringLiteral("hours")].toArray().size(), kBars);
}

// As a damaged file may have them.
TEST(CameraHealth, TakesNoNumbersThatNoCameraReaches)
{
    constexpr qint64 kHuge = 9'000'000'000'000'000'000;
    const qint64 hour = kBegin.time_since_epoch().count() / 3600;
    const QJsonArray hours{QJsonArray{hour - 1, 1, kHuge}, QJsonArray{hour, 1, kHuge},
                           QJsonArray{kHuge, 1, 1}, QJsonArray{-kHuge, 1, 1}};
    CameraHealth read = CameraHealth::fromJson({{QStringLiteral("newest"), -kHuge},
                                                {QStringLiteral("failedSince"), kHuge},
                                                {QStringLiteral("failures"), 2147483647},
                                                {QStringLiteral("images"), kHuge},
                                                {QStringLiteral("bytes"), kHuge},
                                                {QStringLiteral("intervals"), QJsonArray{kHuge}},
                                                {QStringLiteral("hours"), hours}});
    EXPECT_FALSE(read.quietSince());
    EXPECT_FALSE(read.usualInterval());
    EXPECT_EQ(read.failures, 0);
    EXPECT_EQ(read.bytes, 0);
    EXPECT_EQ(read.imagesADay(kBegin), 2);
    EXPECT_EQ(read.bytesADay(kBegin), 0);
    read.addImage(kBegin, 1000);
    EXPECT_EQ(read.bytesADay(kBegin), 1000 * 24);
}

TEST(CameraHealth, OfHugeFilesIsStillANumber)
{
    CameraHealths cameras;
    for (const CameraAddress camera : kAllCameras) {
        cameras[camera].folder = QString::number(indexOf(camera));
        cameras[camera].addImage(kBegin, std::numeric_limits<qint64>::max() / 2);
    }
    EXPECT_GT(bytesADay(cameras, kBegin), 0);
}

TEST(CameraHealth, AddsWhatIsCountedToWhatCameMeanwhile)
{
    CameraHealth camera;
    camera.addImage(kBegin + 3h, 500);
    camera.addImage(kBegin + 3h + 5min, 500);
    CameraHealth counted = delivering(4, 1h); // the last of them is the first of those
    counted.setHour(kBegin + 30h, {7, 700});  // named when a clock was wrong
    camera.takeCount(counted);
    EXPECT_EQ(camera.newest, kBegin + 3h + 5min);
    EXPECT_EQ(camera.images, 4);
    EXPECT_EQ(camera.usualInterval(), 1h);
    EXPECT_EQ(camera.imagesADay(kBegin + 4h), 5);
    EXPECT_EQ(camera.bars(kBegin + 3h).back().images, 2);
    EXPECT_EQ(camera.imagesADay(kBegin + 31h), 0);
}

TEST(CameraHealth, AddsNoHistoryTwice)
{
    CameraHealth camera;
    camera.takeCount(delivering(30, 1h));
    const QJsonObject once = camera.toJson();
    camera.takeCount(delivering(30, 1h));
    EXPECT_EQ(camera.toJson(), once);
}

TEST(CameraHealth, AddsNoShortHistoryTwice)
{
    CameraHealth camera;
    camera.takeCount(delivering(4, 1h));
    camera.addImage(kBegin + 3h + 1min, 500);
    camera.addImage(kBegin + 3h + 2min, 500);
    camera.addImage(kBegin + 3h + 3min, 500);
    const std::optional<std::chrono::seconds> before = camera.usualInterval();
    CameraHealth left = delivering(4, 1h); // of which one was deleted
    left.addImage(kBegin + 3h + 3min, 500);
    camera.takeCount(left);
    EXPECT_EQ(before, 1min);
    EXPECT_EQ(camera.usualInterval(), before);
}

TEST(CameraHealth, AddsTheHistoryUpToTheFirstImageThatItKnows)
{
    CameraHealth camera;
    camera.addImage(kBegin + 2h, 500);
    camera.addImage(kBegin + 2h + 1min, 500);
    CameraHealth folder = delivering(3, 1h);
    folder.addImage(kBegin + 2h + 1min, 500);
    camera.takeCount(folder);
    EXPECT_EQ(camera.usualInterval(), 1h);
}

TEST(CameraHealth, AddsAnOlderHistoryThatWasBroughtInLater)
{
    CameraHealth camera;
    camera.addImage(kBegin + 30h, 500);
    camera.addImage(kBegin + 30h + 1min, 500);
    camera.takeCount(delivering(4, 1h));
    EXPECT_EQ(camera.usualInterval(), 1h);
}

TEST(LateRule, WaitsTenUsualIntervalsButAQuarterOfAnHourAtLeast)
{
    EXPECT_EQ(LateRule().patience(delivering(5, 10min)), 100min);
    EXPECT_EQ(LateRule().patience(delivering(5, 10s)), 15min);
}

TEST(LateRule, NeverCallsAnUnknownCameraLate)
{
    EXPECT_FALSE(LateRule().patience(CameraHealth()));
    EXPECT_FALSE(LateRule().patience(delivering(1, 1min)));
    EXPECT_FALSE((LateRule{.times = 0}.patience(delivering(5, 1min))));
}

TEST(LateRule, WaitsAQuarterOfAnHourForACameraThatOnlyFails)
{
    CameraHealth camera;
    camera.fail(kBegin, QStringLiteral("no answer"));
    EXPECT_EQ(LateRule().patience(camera), 15min);
}

struct AgeCase
{
    const char *text;
    std::chrono::seconds age;
};

class AgeText : public testing::TestWithParam<AgeCase>
{
};

TEST_P(AgeText, IsShort)
{
    EXPECT_EQ(ageText(GetParam().age).toStdString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(All, AgeText,
                         testing::Values(AgeCase{"0 s", -5s}, AgeCase{"59 s", 59s},
                                         AgeCase{"1 min", 60s}, AgeCase{"59 min", 3599s},
                                         AgeCase{"2 h 5 min", 2h + 5min},
                                         AgeCase{"47 h 59 min", 48h - 1s}, AgeCase{"2 days", 48h}));

} // namespace
} // namespace velmora
