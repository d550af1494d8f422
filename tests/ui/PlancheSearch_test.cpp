// The search boxes of the browser among everything else that a user does there: typed text is
// searched for before a click elsewhere takes effect, and the outcome is reported.
#include "SelectionTest.h"

namespace velmora::test {
namespace {

const QString kDate = QStringLiteral("lDate");
const QString kTime = QStringLiteral("lTime");

class PlancheSearch : public SelectionTest
{
protected:
    QString status() { return house_.text(QStringLiteral("txtLog")); }

    void search(const QString &date, const QString &time)
    {
        house_.retype(kDate, date);
        house_.retype(kTime, time);
        house_.key(kTime, Qt::Key_Return);
    }
};

TEST_F(PlancheSearch, AClickOnACellCountsAfterTheSearch)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:12"));
    house_.click(QStringLiteral("Vue3")); // shows the image of second 23
    expectImage(23, 30);
}

TEST_F(PlancheSearch, AClickOnARowCountsAfterTheSearch)
{
    house_.openOn(30);
    const QPoint at = middle(kImages, 27);
    house_.retype(kTime, QStringLiteral("00:00:02"));
    press(kImages, at); // the search scrolls to the start of the list
    release(kImages, at);
    expectImage(27, 30);
}

TEST_F(PlancheSearch, ARightPressEnlargesTheImageThatWasThereBeforeTheSearch)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:02"));
    house_.press(QStringLiteral("Vue3"), Qt::RightButton);
    EXPECT_EQ(house_.shown(QStringLiteral("ZoomImage")), storedName(23));
    expectImage(2, 30);
}

TEST_F(PlancheSearch, AClickOnAnotherListCountsAfterTheSearch)
{
    house_.addImages({0, 1}, 5);
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:12"));
    house_.clickRow(kCameras, 1);
    expectImage(4, 5);
}

TEST_F(PlancheSearch, AnotherWindowComingUpIsNoReasonToSearch)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:12"));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    expectImage(29, 30);
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    house_.key(kTime, Qt::Key_Return);
    expectImage(12, 30);
}

TEST_F(PlancheSearch, TextTypedBeforeAnotherWindowCameUpIsSearchedWhenItIsLeft)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:12"));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    press(kImages, blankPart(kImages)); // chooses nothing itself
    release(kImages, blankPart(kImages));
    expectImage(12, 30);
}

TEST_F(PlancheSearch, TextTypedBeforeAnotherWindowCameUpIsSearchedWhenTabLeavesIt)
{
    house_.openOn(30);
    house_.retype(kTime, QStringLiteral("00:00:12"));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    house_.key(kTime, Qt::Key_Tab);
    expectImage(12, 30);
}

TEST_F(PlancheSearch, SaysThatItFellBackToTheDay)
{
    house_.openOn(30);
    search(QStringLiteral("7/3/06"), QStringLiteral("23:59"));
    expectImage(0, 30);
    EXPECT_TRUE(status().contains(QStringLiteral("23:59"))) << status().toStdString();
    EXPECT_TRUE(status().contains(QStringLiteral("07/03/2006"))) << status().toStdString();
}

TEST_F(PlancheSearch, SaysThatThereIsNoImageOfThatDay)
{
    house_.openOn(30);
    search(QStringLiteral("07-03-2005"), QStringLiteral("00:00"));
    expectImage(29, 30);
    EXPECT_TRUE(status().contains(QStringLiteral("07/03/2005"))) << status().toStdString();
    EXPECT_TRUE(status().contains(QStringLiteral("day/month/year"))) << status().toStdString();
}

TEST_F(PlancheSearch, SaysThatATextIsNoDateAndWhichFormIsMeant)
{
    house_.openOn(30);
    search(QStringLiteral("31/02/2006"), QStringLiteral("00:00"));
    expectImage(29, 30);
    EXPECT_TRUE(status().contains(QStringLiteral("31/02/2006"))) << status().toStdString();
    EXPECT_TRUE(status().contains(QStringLiteral("day/month/year"))) << status().toStdString();
}

TEST_F(PlancheSearch, SaysNothingMoreOnceAnImageIsFound)
{
    house_.openOn(30);
    search(QStringLiteral("Date"), QStringLiteral("00:00:12"));
    ASSERT_FALSE(status().isEmpty());
    search(QStringLiteral("20060307"), QStringLiteral("00:00:12"));
    expectImage(12, 30);
    EXPECT_EQ(status(), QString());
}

TEST_F(PlancheSearch, AFoundImageLeavesOtherMessagesAlone)
{
    house_.openOn(30);
    house_.window.showMessage(QStringLiteral("Image stored"));
    house_.retype(kTime, QStringLiteral("00:00:12"));
    house_.key(kTime, Qt::Key_Return);
    expectImage(12, 30);
    EXPECT_EQ(status(), QStringLiteral("Image stored"));
}

} // namespace
} // namespace velmora::test
