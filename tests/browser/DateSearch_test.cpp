// Searching for an image by date and time.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class DateSearch : public BrowserTest
{
protected:
    void SetUp() override
    {
        house_.addCamera(kCamera, {QStringLiteral("20061230_1200003012.jpg"),
                                   QStringLiteral("20061231_0800003108.jpg"),
                                   QStringLiteral("20061231_1430003114.jpg"),
                                   QStringLiteral("20061231_1430303114.jpg"),
                                   QStringLiteral("20070101_0000000100.jpg")});
        house_.show(kCamera);
        house_.newLog();
    }

    int find(const QString &date, const QString &time)
    {
        browser_.search(date, time);
        return selected();
    }
};

TEST_F(DateSearch, SelectsTheFirstImageOfTheMinute)
{
    EXPECT_EQ(find(QStringLiteral("31/12/2006"), QStringLiteral("14:30")), 2);
}

TEST_F(DateSearch, SelectsTheImageOfTheSecond)
{
    EXPECT_EQ(find(QStringLiteral("31/12/2006"), QStringLiteral("14:30:30")), 3);
}

TEST_F(DateSearch, FallsBackToTheFirstImageOfTheDay)
{
    EXPECT_EQ(find(QStringLiteral("31/12/2006"), QStringLiteral("23:59")), 1);
}

TEST_F(DateSearch, SelectsTheFirstImageOfTheDayWithoutATime)
{
    EXPECT_EQ(find(QStringLiteral("31/12/2006"), QString()), 1);
}

TEST_F(DateSearch, FallsBackToTheDayForATimeThatIsNone)
{
    EXPECT_EQ(find(QStringLiteral("31/12/2006"), QStringLiteral("Time")), 1);
}

TEST_F(DateSearch, LeavesTheSelectionWhenTheDayHasNoImage)
{
    EXPECT_EQ(find(QStringLiteral("29/12/2006"), QStringLiteral("14:30")), 4);
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(DateSearch, DoesNothingWithoutAValidDate)
{
    EXPECT_EQ(find(QStringLiteral("Date"), QStringLiteral("14:30")), 4);
    EXPECT_EQ(find(QStringLiteral("31/11/2006"), QStringLiteral("14:30")), 4);
    EXPECT_EQ(find(QString(), QStringLiteral("14:30")), 4);
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(DateSearch, BringsTheStripToTheImage)
{
    find(QStringLiteral("31/12/2006"), QStringLiteral("14:30"));
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 5"));
    EXPECT_EQ(house_.framed(), QList<int>({2}));
    EXPECT_EQ(house_.newLog().value(0), QStringLiteral("Planche LstDir_Click"));
}

TEST_F(DateSearch, FindsTheKeyAnywhereInAName)
{
    house_.put(kCamera, QStringLiteral("20 copy of 20050505_1200000512.jpg"));
    house_.show(kCamera);
    EXPECT_EQ(find(QStringLiteral("5/5/2005"), QStringLiteral("12:00")), 0);
}

TEST_F(DateSearch, SelectsTheFirstImageOfTheList)
{
    EXPECT_EQ(find(QStringLiteral("30/12/2006"), QStringLiteral("12:00")), 0);
}

TEST_F(DateSearch, FindsNothingInAnEmptyList)
{
    house_.addCamera({0, 1});
    house_.show({0, 1});
    EXPECT_EQ(find(QStringLiteral("31/12/2006"), QStringLiteral("14:30")), -1);
}

} // namespace
} // namespace velmora::test
