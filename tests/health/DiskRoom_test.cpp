// How much room is left, and for how long.
#include "health/DiskRoom.h"

#include "health/HealthOptions.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using test::TempTree;

constexpr qint64 kMegabyte = 1'000'000;

TEST(DiskRoom, IsAskedOfTheFolder)
{
    const TempTree tree;
    const auto room = diskRoom(tree.path());
    ASSERT_TRUE(room);
    EXPECT_GT(room->allBytes, 0);
    EXPECT_LE(room->freeBytes, room->allBytes);
}

TEST(DiskRoom, IsUnknownWhereItCannotBeAsked)
{
    const TempTree tree;
    EXPECT_FALSE(diskRoom({}));
    EXPECT_FALSE(diskRoom(tree.path(u"missing")));
    EXPECT_FALSE(diskRoom(QStringLiteral("/proc"))); // a file system without blocks
}

TEST(DiskRoom, IsForecastAtTheRateOfTheDay)
{
    EXPECT_EQ(fullInDays(120, 10), 12.0);
    EXPECT_EQ(fullInDays(0, 10), 0.0);
    EXPECT_FALSE(fullInDays(120, 0));
    EXPECT_FALSE(fullInDays(1'000'000, 1)); // in thousands of years
}

TEST(DiskRoom, IsReportedWithItsForecast)
{
    EXPECT_TRUE(roomText({125 * kMegabyte, 1000 * kMegabyte}, 10 * kMegabyte)
                    .contains(QStringLiteral("full in 12 days at this rate")));
    EXPECT_FALSE(roomText({125 * kMegabyte, 1000 * kMegabyte}, 0).contains(QStringLiteral("full")));
}

TEST(DiskLimit, IsAGigabyteOrAFiftiethWhicheverIsLess)
{
    const TempTree tree;
    const SettingsFile settings(tree.path());
    const HealthOptions options(settings);
    EXPECT_EQ(options.limitBytes(1'000'000 * kMegabyte), 1000 * kMegabyte);
    EXPECT_EQ(options.limitBytes(5000 * kMegabyte), 100 * kMegabyte);
    settings.write(u"Health", u"LimitMB", u"25");
    EXPECT_EQ(options.limitBytes(5000 * kMegabyte), 25 * kMegabyte);
    settings.write(u"Health", u"LimitMB", u"-7");
    EXPECT_EQ(options.limitBytes(5000 * kMegabyte), 100 * kMegabyte);
}

} // namespace
} // namespace velmora
