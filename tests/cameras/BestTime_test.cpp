// The refresh interval's text form.
#include "cameras/BestTime.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

struct TimeRow
{
    const char *name;
    QString text;
    BestTime time;
};

const std::vector<TimeRow> &times()
{
    static const std::vector<TimeRow> rows = {
        {"unknown", QStringLiteral("00:00:00"), {0, 0, 0}},
        {"plain", QStringLiteral("01:02:03"), {1, 2, 3}},
        {"one digit", QStringLiteral("1:2:3"), {1, 2, 3}},
        {"blanks around", QStringLiteral("  01:02:03 "), {1, 2, 3}},
        {"whole days", QStringLiteral("48:00:00"), {48, 0, 0}},
        {"largest", QStringLiteral("99:59:59"), {99, 59, 59}},
    };
    return rows;
}

const std::vector<TimeRow> &noTimes()
{
    static const std::vector<TimeRow> rows = {
        {"empty", QString(), {}},
        {"words", QStringLiteral("never"), {}},
        {"no seconds", QStringLiteral("01:02"), {}},
        {"four fields", QStringLiteral("01:02:03:04"), {}},
        {"empty field", QStringLiteral("01::03"), {}},
        {"three digits", QStringLiteral("100:00:01"), {}},
        {"minute 60", QStringLiteral("00:60:01"), {}},
        {"second 60", QStringLiteral("00:01:60"), {}},
        {"sign", QStringLiteral("-1:02:03"), {}},
        {"blank inside", QStringLiteral("01: 2:03"), {}},
        {"text behind", QStringLiteral("01:02:03x"), {}},
    };
    return rows;
}

TEST(BestTime, ReadsHoursMinutesAndSeconds)
{
    for (const TimeRow &row : times()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(bestTimeFromText(row.text), row.time);
    }
}

TEST(BestTime, IsUnknownInAnyOtherForm)
{
    for (const TimeRow &row : noTimes()) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(bestTimeFromText(row.text).isUnknown());
    }
}

TEST(BestTime, IsKnownFromOneSecondOn)
{
    EXPECT_TRUE(BestTime{}.isUnknown());
    EXPECT_FALSE((BestTime{0, 0, 1}.isUnknown()));
}

TEST(BestTime, WritesTwoDigitsEach)
{
    EXPECT_EQ(BestTime{}.text(), QStringLiteral("00:00:00"));
    EXPECT_EQ((BestTime{1, 2, 3}.text()), QStringLiteral("01:02:03"));
    EXPECT_EQ((BestTime{99, 59, 59}.text()), QStringLiteral("99:59:59"));
}

TEST(BestTime, IsOrderedByLength)
{
    EXPECT_LT((BestTime{0, 59, 59}), (BestTime{1, 0, 0}));
    EXPECT_LT((BestTime{1, 0, 59}), (BestTime{1, 1, 0}));
}

} // namespace
} // namespace velmora
