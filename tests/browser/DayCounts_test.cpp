// Images counted by day and hour, and the one nearest to a moment.
#include "browser/DayCounts.h"

#include "NameLists.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

const ImageNames &someNames()
{
    static const ImageNames names =
        listOf({"20061230_1200003012.jpg", "20061231-note.jpg", "20061231_0800003108.jpg",
                "20061231_1430003114.jpg", "20061231_145959.jpg", "20069999_0000000000.jpg",
                "200x.jpg", "20070102_0000000200.jpg", "20070102_2359590223.png"});
    return names;
}

TEST(DayCounts, CountsTheDaysThatHaveImages)
{
    EXPECT_EQ(countDays(someNames()),
              (std::vector<DayCount>{
                  {2006y / 12 / 30, {0, 1}}, {2006y / 12 / 31, {1, 4}}, {2007y / 1 / 2, {6, 2}}}));
}

TEST(DayCounts, OfNoNamesAreNone)
{
    EXPECT_TRUE(countDays(listOf({})).empty());
    EXPECT_EQ(nearestTo(listOf({}), "20061231_120000"), std::nullopt);
}

TEST(DayCounts, CountsTheHoursOfADay)
{
    const HourCounts hours = countHours(someNames(), 2006y / 12 / 31);
    EXPECT_EQ(hours.at(8), (ImageRun{2, 1}));
    EXPECT_EQ(hours.at(14), (ImageRun{3, 2}));
    EXPECT_EQ(hours.at(9).count, 0);
}

struct NearestCase
{
    const char *name;
    const char *moment;
    qsizetype position;
};

class NearestImage : public testing::TestWithParam<NearestCase>
{
};

TEST_P(NearestImage, IsTheOneWhoseTimeIsNearest)
{
    EXPECT_EQ(nearestTo(someNames(), GetParam().moment), GetParam().position);
}

INSTANTIATE_TEST_SUITE_P(Moments, NearestImage,
                         testing::Values(NearestCase{"Exact", "20061231_143000", 3},
                                         NearestCase{"Before", "20061231_130000", 3},
                                         NearestCase{"BehindTheDay", "20070101_090000", 6},
                                         NearestCase{"FarBefore", "20000101_000000", 0},
                                         NearestCase{"FarBehind", "20990101_000000", 7}),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(DayCounts, CountsAFullFolder)
{
    ImageNamesBuilder builder;
    for (int hour = 0; hour < 20'000; ++hour) {
        const year_month_day day{sys_days(2006y / 1 / 1) + days(hour / 24)};
        builder.add(dayKey(day) + '_' + QByteArray::number(100 + hour % 24).right(2) +
                    "00000101.jpg");
    }
    while (builder.sortSome()) {
    }
    const ImageNames names = builder.take();
    const std::vector<DayCount> counted = countDays(names);
    EXPECT_EQ(counted.size(), 834U);
    EXPECT_EQ(counted.front().images, (ImageRun{0, 24}));
    EXPECT_EQ(counted.back().images, (ImageRun{19'992, 8}));
}

} // namespace
} // namespace velmora::test
