// Whether a picture is a new image, and what its date says about the camera's interval.
#include "capture/NewImageRule.h"

#include "capture/HttpDate.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr WallTime kDate = std::chrono::local_days{std::chrono::year{2006} / 3 / 7} + 14h;
const QString kHeader = QStringLiteral("Tue, 07 Mar 2006 14:00:00 GMT");
const QString kNoDate = QStringLiteral("yesterday");

TEST(IsNewImage, TakesAnyPictureIntoAnEmptyFolder)
{
    EXPECT_TRUE(isNewImage({kHeader, kDate, std::nullopt}, FolderState::Empty));
    EXPECT_TRUE(isNewImage({QString(), std::nullopt, std::nullopt}, FolderState::Empty));
    EXPECT_TRUE(isNewImage({kNoDate, std::nullopt, kDate}, FolderState::Empty));
}

TEST(IsNewImage, TakesTheSameDateAgainIntoAnEmptyFolder)
{
    EXPECT_TRUE(isNewImage({kHeader, kDate, kDate}, FolderState::Empty));
}

TEST(IsNewImage, RefusesTheSameDateWhereThereAreFiles)
{
    EXPECT_FALSE(isNewImage({kHeader, kDate, kDate}, FolderState::HoldsFiles));
}

TEST(IsNewImage, TakesALaterAndAnEarlierDate)
{
    EXPECT_TRUE(isNewImage({kHeader, kDate, kDate - 1s}, FolderState::HoldsFiles));
    EXPECT_TRUE(isNewImage({kHeader, kDate, kDate + 1s}, FolderState::HoldsFiles));
}

TEST(IsNewImage, TakesAnyDateWhenNoneIsStored)
{
    EXPECT_TRUE(isNewImage({kHeader, kDate, std::nullopt}, FolderState::HoldsFiles));
}

TEST(IsNewImage, RefusesAPictureWithoutHeaderWhereThereAreFiles)
{
    EXPECT_FALSE(isNewImage({QString(), std::nullopt, kDate}, FolderState::HoldsFiles));
    EXPECT_FALSE(isNewImage({QString(), std::nullopt, std::nullopt}, FolderState::HoldsFiles));
}

TEST(IsNewImage, TakesAHeaderThatIsNoDateAsOtherThanAnyDate)
{
    EXPECT_TRUE(isNewImage({kNoDate, std::nullopt, kDate}, FolderState::HoldsFiles));
    EXPECT_TRUE(isNewImage({kNoDate, std::nullopt, std::nullopt}, FolderState::HoldsFiles));
    EXPECT_TRUE(isNewImage({kNoDate, std::nullopt, kZeroDate}, FolderState::HoldsFiles));
}

struct IntervalRow
{
    const char *name;
    std::chrono::seconds interval;
    QString candidate;
};

void PrintTo(const IntervalRow &row, std::ostream *out)
{
    *out << row.name;
}

class BestTimeCandidate : public testing::TestWithParam<IntervalRow>
{
};

TEST_P(BestTimeCandidate, CountsWholeDaysAsHours)
{
    const ImageDates dates{kHeader, kDate, kDate - GetParam().interval};
    EXPECT_EQ(bestTimeCandidate(dates), GetParam().candidate);
}

const IntervalRow kIntervals[] = {
    {"Unchanged", 0s, QStringLiteral("00:00:00")},
    {"OneSecond", 1s, QStringLiteral("00:00:01")},
    {"AMinuteAndFive", 65s, QStringLiteral("00:01:05")},
    {"AnHour", 1h, QStringLiteral("01:00:00")},
    {"ADayAndTwoHours", 26h, QStringLiteral("26:00:00")},
    {"FourDaysThreeHoursTenMinutes", 99h + 10min, QStringLiteral("99:10:00")},
    {"ASecondBelowHundredHours", 100h - 1s, QStringLiteral("99:59:59")},
    {"HundredHours", 100h, QStringLiteral("00:00:00")},
    {"AYear", 365 * 24h, QStringLiteral("00:00:00")},
    {"ASecondBack", -1s, QStringLiteral("00:00:00")},
    {"AnHourAndAMinuteBack", -61min, QStringLiteral("00:00:00")},
    {"DaysBack", -50h, QStringLiteral("00:00:00")},
};

INSTANTIATE_TEST_SUITE_P(NewImageRule, BestTimeCandidate, testing::ValuesIn(kIntervals),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(BestTimeCandidate, IsUnknownForTheFirstImage)
{
    EXPECT_EQ(bestTimeCandidate({kHeader, kDate, std::nullopt}), QStringLiteral("00:00:00"));
}

TEST(BestTimeCandidate, IsMissingWithoutADate)
{
    EXPECT_EQ(bestTimeCandidate({QString(), std::nullopt, kDate}), std::nullopt);
    EXPECT_EQ(bestTimeCandidate({kNoDate, std::nullopt, kDate}), std::nullopt);
}

TEST(BestTimeCandidate, IsMissingForTheZeroDate)
{
    EXPECT_EQ(
        bestTimeCandidate({QStringLiteral("Sat, 30 Dec 1899 00:00:00 GMT"), kZeroDate, kDate}),
        std::nullopt);
}

TEST(ReplacesBestTime, TakesAnyCandidateForAnUnknownTime)
{
    const QString candidate = QStringLiteral("99:59:59");
    EXPECT_TRUE(replacesBestTime(candidate, QString()));
    EXPECT_TRUE(replacesBestTime(candidate, QStringLiteral("0")));
    EXPECT_TRUE(replacesBestTime(candidate, QStringLiteral("00:00:00")));
}

TEST(ReplacesBestTime, TakesAShorterTimeOnly)
{
    const QString stored = QStringLiteral("00:10:00");
    EXPECT_TRUE(replacesBestTime(QStringLiteral("00:09:59"), stored));
    EXPECT_FALSE(replacesBestTime(QStringLiteral("00:10:00"), stored));
    EXPECT_FALSE(replacesBestTime(QStringLiteral("00:10:01"), stored));
}

TEST(ReplacesBestTime, TakesTheUnknownTimeToo)
{
    EXPECT_TRUE(replacesBestTime(QStringLiteral("00:00:00"), QStringLiteral("00:10:00")));
}

TEST(ReplacesBestTime, ComparesAsText)
{
    EXPECT_TRUE(replacesBestTime(QStringLiteral("10:00:00"), QStringLiteral("9:00:00")));
    EXPECT_FALSE(replacesBestTime(QStringLiteral("09:00:00"), QStringLiteral("00:0")));
}

} // namespace
} // namespace velmora::test
