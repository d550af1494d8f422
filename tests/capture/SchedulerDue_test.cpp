// Which cameras a pass loads: fixed ones once in 61 ticks, automatic ones by their best time, empty
// ones each time.
#include "CaptureTest.h"
#include "support/RefusedCalls.h"

#include <QDir>
#include <QFile>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kCamera{0, 0};

class Due : public CaptureTest
{
protected:
    /// A camera that has an image, after the first pass.
    void addAndStart(CameraAddress camera)
    {
        add(camera);
        house_.tick();
        ASSERT_EQ(fetches(), 1);
    }

    void makeAutomatic(CameraAddress camera, const QString &bestTime, const QString &lastImage)
    {
        house_.setValue(u"AutoDelai", camera, QStringLiteral("1"));
        house_.setValue(u"BestTime", camera, bestTime);
        house_.setValue(u"LocalTime", camera, lastImage);
    }

    /// True when the next tick fetches something.
    bool nextTickLoads()
    {
        const qsizetype before = fetches();
        house_.tick();
        return fetches() > before;
    }
};

TEST_F(Due, EverySixtyOneTicksInFixedMode)
{
    add(kCamera);
    QList<int> ticksWithLoad;
    constexpr int kTicksOfADay = 24 * 60; // of a minute each
    for (int tick = 1; tick <= kTicksOfADay; ++tick) {
        const qsizetype before = fetches();
        house_.beginTick();
        clock_.advance(1min);
        if (fetches() > before) {
            ticksWithLoad.append(tick);
        }
    }
    QList<int> expected{1}; // the first pass loads everything
    for (int tick = 5; tick <= kTicksOfADay; tick += 61) {
        expected.append(tick);
    }
    EXPECT_EQ(ticksWithLoad, expected);
}

TEST_F(Due, AllInTheFirstPass)
{
    for (const CameraAddress camera : {CameraAddress{0, 0}, {0, 9}, {5, 5}, {9, 9}}) {
        add(camera);
        house_.putImage(camera, kImageName);
        makeAutomatic(camera, QStringLiteral("10:00:00"), QStringLiteral("07/03/2006 14:05:09"));
    }
    house_.tick();
    EXPECT_EQ(fetches(), 4);
    house_.tick();
    EXPECT_EQ(fetches(), 4);
}

TEST_F(Due, AtEveryPassWhileTheFolderIsEmpty)
{
    add(kCamera, failedReply());
    house_.tick();
    EXPECT_TRUE(nextTickLoads());
    EXPECT_TRUE(nextTickLoads());
}

TEST_F(Due, NoMoreWhileItCannotBeToldWhetherTheFolderHoldsAFile)
{
    add(kCamera, failedReply());
    house_.tick();
    const RefusedCall failing(Call::ReadFolder, EIO);
    EXPECT_FALSE(nextTickLoads());
}

TEST_F(Due, NoMoreOnceTheFolderHoldsAFile)
{
    add(kCamera, failedReply());
    house_.tick();
    house_.putImage(kCamera, QStringLiteral("anything.txt"));
    EXPECT_FALSE(nextTickLoads());
}

TEST_F(Due, WhileTheFolderHoldsNothingButFolders)
{
    addAndStart(kCamera);
    ASSERT_TRUE(QFile::remove(house_.tree.path(house_.folder(kCamera) + u'/' + kImageName)));
    house_.tree.makeFolder(house_.folder(kCamera) + QStringLiteral("/deeper"));
    EXPECT_TRUE(nextTickLoads());
}

TEST_F(Due, WhenTheFolderIsGone)
{
    addAndStart(kCamera);
    ASSERT_TRUE(QDir(house_.tree.path(house_.folder(kCamera))).removeRecursively());
    EXPECT_TRUE(nextTickLoads());
}

TEST_F(Due, AtEveryPassWhileTheFolderIsEmptyInAutomaticModeToo)
{
    add(kCamera, failedReply());
    house_.tick();
    makeAutomatic(kCamera, QStringLiteral("10:00:00"), QStringLiteral("07/03/2006 14:05:09"));
    EXPECT_TRUE(nextTickLoads());
}

struct SwitchRow
{
    const char *name;
    QString stored;
    bool active;
};

void PrintTo(const SwitchRow &row, std::ostream *out)
{
    *out << row.stored.toStdString();
}

class DueInGroup : public CaptureTest, public testing::WithParamInterface<SwitchRow>
{
};

TEST_P(DueInGroup, WhoseSwitchIsExactlyOne)
{
    house_.log.setOn(true);
    add({3, 4});
    house_.settings.write(u"Liste3", u"LstAct", GetParam().stored);
    house_.tick();
    EXPECT_EQ(fetches(), GetParam().active ? 1 : 0);
    EXPECT_EQ(house_.logText().isEmpty(), !GetParam().active);
}

const SwitchRow kSwitches[] = {
    {"Zero", QStringLiteral("0"), false},      {"One", QStringLiteral("1"), true},
    {"Two", QStringLiteral("2"), false},       {"Empty", QString(), false},
    {"MinusOne", QStringLiteral("-1"), false}, {"OneAndAHalf", QStringLiteral("1.5"), false},
    {"Word", QStringLiteral("True"), false},   {"LeadingOne", QStringLiteral("1 yes"), true},
};

INSTANTIATE_TEST_SUITE_P(Scheduler, DueInGroup, testing::ValuesIn(kSwitches),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(Due, NeverWithoutAnAddress)
{
    house_.log.setOn(true);
    add(kCamera);
    house_.table.setUrl(kCamera, u"");
    makeAutomatic(kCamera, QStringLiteral("00:00:01"), QStringLiteral("01/01/2006 00:00:00"));
    house_.tick();
    house_.scheduler.setTickCounter(59);
    house_.tick();
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(house_.logText(), QString());
}

struct AutomaticRow
{
    const char *name;
    QString bestTime;
    QString lastImage;
    bool due; // at 14:05:09 on the 7th
};

void PrintTo(const AutomaticRow &row, std::ostream *out)
{
    *out << row.name;
}

class DueInAutomaticMode : public Due, public testing::WithParamInterface<AutomaticRow>
{
};

TEST_P(DueInAutomaticMode, ByTheBestTimeSinceTheLastImage)
{
    addAndStart(kCamera);
    makeAutomatic(kCamera, GetParam().bestTime, GetParam().lastImage);
    EXPECT_EQ(nextTickLoads(), GetParam().due);
}

const AutomaticRow kAutomatic[] = {
    {"ASecondTooEarly", QStringLiteral("00:10:00"), QStringLiteral("07/03/2006 13:55:10"), false},
    {"OnTheSecond", QStringLiteral("00:10:00"), QStringLiteral("07/03/2006 13:55:09"), true},
    {"DaysAndTimeOfDayApart", QStringLiteral("26:00:00"), QStringLiteral("05/03/2006 13:05:09"),
     false},
    {"ADayAndTwoHours", QStringLiteral("26:00:00"), QStringLiteral("06/03/2006 12:05:09"), true},
    {"NoLastImage", QStringLiteral("00:10:00"), QString(), true},
    {"LastImageIsNoDate", QStringLiteral("00:10:00"), QStringLiteral("soon"), true},
    {"LastImageInTheFuture", QStringLiteral("00:10:00"), QStringLiteral("07/03/2007 14:05:09"),
     true},
    {"UnknownBestTime", QStringLiteral("00:00:00"), QStringLiteral("01/01/2006 00:00:00"), false},
    {"BestTimeOfAnotherForm", QStringLiteral("ten"), QStringLiteral("01/01/2006 00:00:00"), false},
};

INSTANTIATE_TEST_SUITE_P(Scheduler, DueInAutomaticMode, testing::ValuesIn(kAutomatic),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(Due, ByTheFixedPeriodWithAnUnknownBestTime)
{
    addAndStart(kCamera);
    makeAutomatic(kCamera, QStringLiteral("00:00:00"), QStringLiteral("07/03/2006 14:05:09"));
    EXPECT_FALSE(nextTickLoads());
    house_.scheduler.setTickCounter(59);
    EXPECT_TRUE(nextTickLoads());
}

TEST_F(Due, NotByTheFixedPeriodInAutomaticMode)
{
    addAndStart(kCamera);
    makeAutomatic(kCamera, QStringLiteral("10:00:00"), QStringLiteral("07/03/2006 14:05:09"));
    house_.scheduler.setTickCounter(59);
    EXPECT_FALSE(nextTickLoads());
}

TEST_F(Due, ByTheFixedPeriodWithTheAutomaticModeOff)
{
    addAndStart(kCamera);
    makeAutomatic(kCamera, QStringLiteral("00:00:01"), QStringLiteral("01/01/2006 00:00:00"));
    house_.setValue(u"AutoDelai", kCamera, QStringLiteral("0"));
    EXPECT_FALSE(nextTickLoads());
    house_.scheduler.setTickCounter(59);
    EXPECT_TRUE(nextTickLoads());
}

TEST_F(Due, ByAnyNumberButZeroInAutomaticMode)
{
    addAndStart(kCamera);
    makeAutomatic(kCamera, QStringLiteral("00:00:01"), QStringLiteral("07/03/2006 00:00:00"));
    house_.setValue(u"AutoDelai", kCamera, QStringLiteral("2"));
    EXPECT_TRUE(nextTickLoads());
}

TEST_F(Due, ASecondLaterAfterAStoreInAutomaticMode)
{
    add(kCamera);
    house_.setValue(u"AutoDelai", kCamera, QStringLiteral("1"));
    house_.setValue(u"LastModified", kCamera, QStringLiteral("07/03/2006 14:04:09"));
    house_.tick();
    ASSERT_EQ(house_.value(u"BestTime", kCamera), QStringLiteral("00:01:00"));
    clock_.advance(60s);
    EXPECT_FALSE(nextTickLoads());
    clock_.advance(1s);
    EXPECT_TRUE(nextTickLoads());
}

} // namespace
} // namespace velmora::test
