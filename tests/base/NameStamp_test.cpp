// The date and time at the start of image names.
#include "base/NameStamp.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono;

constexpr year_month_day kDay = year{2006} / 3 / 7;
constexpr WallTime kMoment = local_days{kDay} + 14h + 5min + 9s;

TEST(NameStamp, WritesDayAndMoment)
{
    EXPECT_EQ(dayKey(kDay), "20060307");
    EXPECT_EQ(dayKey(kMoment), "20060307");
    EXPECT_EQ(momentKey(kMoment), "20060307_140509");
    EXPECT_EQ(dayAndHourKey(kMoment), "0714");
    EXPECT_EQ(momentKey(kZeroDate), "18991230_000000");
    EXPECT_EQ(dayKey(year{987} / 1 / 2), "09870102");
}

TEST(NameStamp, ReadsWhatItWrites)
{
    EXPECT_EQ(dayOfName(dayKey(kDay)), kDay);
    EXPECT_EQ(momentOfName(momentKey(kMoment)), kMoment);
    EXPECT_EQ(momentOfName(momentKey(kZeroDate)), kZeroDate);
}

TEST(NameStamp, ReadsOnlyTheStartOfAName)
{
    EXPECT_EQ(dayOfName("20060307.jpg"), kDay);
    EXPECT_EQ(momentOfName("20060307_1405090714.jpg"), kMoment);
    EXPECT_EQ(momentOfName("20060307_140509 (2).png"), kMoment);
}

TEST(NameStamp, ReadsNothingFromAnotherForm)
{
    for (const char *const name : {"", "2006030", "200610 5.jpg", "2006-3-7", "a0060307"}) {
        EXPECT_FALSE(dayOfName(name)) << name;
    }
    for (const char *const name : {"", "20060307_14050", "20060307-140509", "20060307_1405a9",
                                   "20060307_14 509", "2006030a_140509"}) {
        EXPECT_FALSE(isStamped(name)) << name;
        EXPECT_FALSE(momentOfName(name)) << name;
    }
}

TEST(NameStamp, ReadsNothingThatDoesNotExist)
{
    EXPECT_FALSE(dayOfName("20060230"));
    for (const char *const name : {"20060230_140509", "20061307_140509", "20060307_240509",
                                   "20060307_146009", "20060307_140560"}) {
        EXPECT_TRUE(isStamped(name)) << name;
        EXPECT_FALSE(momentOfName(name)) << name;
    }
}

} // namespace
} // namespace velmora::test
