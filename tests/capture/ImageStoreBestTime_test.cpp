// The best time of a camera: the shortest interval between two of its images.
#include "CaptureTest.h"

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 3};

struct BestTimeRow
{
    const char *name;
    QString lastModified; // stored
    QString bestTime;     // stored
    QString expected;
    QString logged; // none if it stays
};

void PrintTo(const BestTimeRow &row, std::ostream *out)
{
    *out << row.name;
}

class ChargeFileBestTime : public CaptureTest, public testing::WithParamInterface<BestTimeRow>
{
};

TEST_P(ChargeFileBestTime, IsTheShortestInterval)
{
    house_.log.setOn(true);
    add(kCamera);
    house_.putImage(kCamera, QStringLiteral("20060101_0000000100.jpg"));
    house_.setValue(u"LastModified", kCamera, GetParam().lastModified);
    house_.setValue(u"BestTime", kCamera, GetParam().bestTime);
    house_.showGroup(0);
    house_.load(kCamera);
    EXPECT_EQ(house_.value(u"BestTime", kCamera), GetParam().expected);
    EXPECT_EQ(house_.page.row(kCamera.row).bestTime.text(), GetParam().expected);
    const QStringList lines = house_.logText().split(u'\n').filter(QStringLiteral("Best times"));
    EXPECT_EQ(lines.join(u'\n'), GetParam().logged);
}

const BestTimeRow kRows[] = {
    {"FirstKnown", QStringLiteral("07/03/2006 13:55:09"), QString(), QStringLiteral("00:10:00"),
     QStringLiteral("Best times 00:10:00 - ")},
    {"ForUnknown", QStringLiteral("07/03/2006 13:55:09"), QStringLiteral("00:00:00"),
     QStringLiteral("00:10:00"), QStringLiteral("Best times 00:10:00 - 00:00:00")},
    {"ForZero", QStringLiteral("07/03/2006 13:55:09"), QStringLiteral("0"),
     QStringLiteral("00:10:00"), QStringLiteral("Best times 00:10:00 - 0")},
    {"Shorter", QStringLiteral("07/03/2006 13:55:09"), QStringLiteral("00:20:00"),
     QStringLiteral("00:10:00"), QStringLiteral("Best times 00:10:00 - 00:20:00")},
    {"Longer", QStringLiteral("07/03/2006 13:55:09"), QStringLiteral("00:05:00"),
     QStringLiteral("00:05:00"), QString()},
    {"TheSame", QStringLiteral("07/03/2006 13:55:09"), QStringLiteral("00:10:00"),
     QStringLiteral("00:10:00"), QString()},
    {"FourDaysThreeHoursTenMinutes", QStringLiteral("03/03/2006 10:55:09"), QString(),
     QStringLiteral("99:10:00"), QStringLiteral("Best times 99:10:00 - ")},
    {"HundredHours", QStringLiteral("03/03/2006 10:05:09"), QStringLiteral("00:05:00"),
     QStringLiteral("00:00:00"), QStringLiteral("Best times 00:00:00 - 00:05:00")},
    {"AnOlderImage", QStringLiteral("07/03/2006 15:00:00"), QStringLiteral("00:05:00"),
     QStringLiteral("00:00:00"), QStringLiteral("Best times 00:00:00 - 00:05:00")},
    {"TheSameImage", QStringLiteral("07/03/2006 14:05:09"), QStringLiteral("00:05:00"),
     QStringLiteral("00:00:00"), QStringLiteral("Best times 00:00:00 - 00:05:00")},
    {"StoredDateIsNone", QStringLiteral("soon"), QStringLiteral("00:05:00"),
     QStringLiteral("00:00:00"), QStringLiteral("Best times 00:00:00 - 00:05:00")},
};

INSTANTIATE_TEST_SUITE_P(ImageStore, ChargeFileBestTime, testing::ValuesIn(kRows),
                         [](const auto &info) { return std::string(info.param.name); });

using ChargeFileWithoutDate = CaptureTest;

TEST_F(ChargeFileWithoutDate, KeepsTheBestTime)
{
    for (const QString &header : {QString(), QStringLiteral("yesterday")}) {
        add(kCamera, goodReply(header));
        house_.setValue(u"BestTime", kCamera, QStringLiteral("00:05:00"));
        house_.load(kCamera);
        EXPECT_EQ(house_.value(u"BestTime", kCamera), QStringLiteral("00:05:00"));
    }
}

} // namespace
} // namespace velmora::test
