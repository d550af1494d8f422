// Numbers of the settings as whole numbers: halves rounded to even, and never clamped.
#include "settings/Numbers.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace velmora {
namespace {

struct RoundingRow
{
    double number;
    qint32 whole;
};

const std::vector<RoundingRow> kSmall = {
    {0, 0},      {0.4, 0},    {0.5, 0},         {0.6, 1},         {1.5, 2},
    {2.5, 2},    {3.5, 4},    {-0.5, 0},        {-1.5, -2},       {-2.5, -2},
    {2.4999, 2}, {2.5001, 3}, {32767.4, 32767}, {-32768, -32768}, {-32768.5, -32768}};

const std::vector<RoundingRow> kLarge = {{32768, 32768},
                                         {1000000.5, 1000000},
                                         {2147483647.0, 2147483647},
                                         {2147483647.4, 2147483647},
                                         {-2147483648.0, std::numeric_limits<qint32>::min()},
                                         {-2147483648.5, std::numeric_limits<qint32>::min()}};

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

TEST(Numbers, RoundsHalvesToTheEvenNumber)
{
    for (const RoundingRow &row : kSmall) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(toInt16(row.number), row.whole);
        EXPECT_EQ(toInt32(row.number), row.whole);
    }
}

TEST(Numbers, RoundsUpToTheLimitsOf32Bits)
{
    for (const RoundingRow &row : kLarge) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(toInt32(row.number), row.whole);
    }
}

TEST(Numbers, RefusesWhatDoesNotFitIn16Bits)
{
    for (const double number :
         {32767.5, 32768.0, -32768.6, -32769.0, 1e20, kInfinity, -kInfinity, kNoNumber}) {
        SCOPED_TRACE(number);
        EXPECT_THROW(static_cast<void>(toInt16(number)), OverflowError);
    }
}

TEST(Numbers, RefusesWhatDoesNotFitIn32Bits)
{
    for (const double number :
         {2147483647.5, 2147483648.0, -2147483649.0, 1e20, kInfinity, -kInfinity, kNoNumber}) {
        SCOPED_TRACE(number);
        EXPECT_THROW(static_cast<void>(toInt32(number)), OverflowError);
    }
}

} // namespace
} // namespace velmora
