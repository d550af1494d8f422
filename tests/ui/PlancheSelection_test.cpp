// What is highlighted is what is selected: mouse and keys of every kind on the browser's lists, and
// refreshes that come between a press and its release.
#include "SelectionTest.h"

namespace velmora::test {
namespace {

class PlancheSelection : public SelectionTest
{
protected:
    // Everything but a plain left click on a row.
    void useMouseOddly(const QString &list)
    {
        const QPoint at = middle(list, 1);
        press(list, at, Qt::RightButton);
        release(list, at, Qt::RightButton);
        press(list, at, Qt::MiddleButton);
        release(list, at, Qt::MiddleButton);
        press(list, at, Qt::LeftButton, Qt::ControlModifier);
        release(list, at, Qt::LeftButton, Qt::ControlModifier);
        press(list, at);
        QTest::mouseMove(view(list).viewport(), middle(list, 4));
        release(list, middle(list, 4));
        press(list, at);
        release(list, QPoint(-30, -30));
    }

    void controlClick(const QString &list, int row)
    {
        press(list, middle(list, row), Qt::LeftButton, Qt::ControlModifier);
        release(list, middle(list, row), Qt::LeftButton, Qt::ControlModifier);
    }
};

TEST_F(PlancheSelection, OnlyAPlainLeftClickOnARowChoosesAnImage)
{
    house_.openOn(12);
    useMouseOddly(kImages);
    expectImage(11, 12);
    house_.clickRow(kImages, 1);
    expectImage(1, 12);
}

TEST_F(PlancheSelection, OnlyAPlainLeftClickOnARowChoosesACameraOfTheGroup)
{
    openGroup(5);
    useMouseOddly(kRowsOfGroup);
    expectCamera(5, 4);
    EXPECT_EQ(targetOfDelete(kRowsOfGroup), storedName(3));
    house_.clickRow(kRowsOfGroup, 2);
    expectCamera(2, 2);
    EXPECT_EQ(targetOfDelete(kRowsOfGroup), storedName(1));
}

TEST_F(PlancheSelection, OnlyAPlainLeftClickOnARowChoosesAGroupOrACamera)
{
    house_.openOn(12);
    for (const QString &list : {kGroups, kCameras}) {
        SCOPED_TRACE(list.toStdString());
        useMouseOddly(list);
        EXPECT_EQ(highlighted(list), QList<int>{0});
        EXPECT_EQ(row(list), 0);
        house_.clickRow(list, 1);
        EXPECT_EQ(highlighted(list), QList<int>{1});
    }
}

TEST_F(PlancheSelection, AControlClickLeavesTheSelectedRowHighlighted)
{
    openGroup(5);
    for (const auto &[list, selected] :
         {std::pair{kGroups, 0}, std::pair{kCameras, 5}, std::pair{kRowsOfGroup, 5}}) {
        controlClick(list, selected);
        EXPECT_EQ(highlighted(list), QList<int>{selected}) << list.toStdString();
    }
}

TEST_F(PlancheSelection, AClickIntoTheBlankPartLeavesTheSelectedRowHighlighted)
{
    house_.openOn(3);
    press(kImages, blankPart(kImages));
    EXPECT_EQ(highlighted(kImages), QList<int>{2});
    release(kImages, blankPart(kImages));
    expectImage(2, 3);
}

TEST_F(PlancheSelection, TheHighlightStaysWithTheSelectionUntilTheButtonIsReleased)
{
    house_.openOn(12);
    press(kImages, middle(kImages, 3));
    expectImage(11, 12);
    release(kImages, middle(kImages, 3));
    expectImage(3, 12);
}

TEST_F(PlancheSelection, TheImagePressedIsMeantThoughARefreshComesBeforeTheRelease)
{
    house_.openOn(12);
    const QPoint at = middle(kImages, 3);
    press(kImages, at);
    refreshWith({0, 0}, QStringLiteral("20060101_0000000714.jpg"));
    release(kImages, at);
    EXPECT_EQ(listed(4), storedName(3));
    expectImage(4, 13);
}

TEST_F(PlancheSelection, NothingIsChosenWhenTheImagePressedIsGoneAtTheRelease)
{
    house_.openOn(12);
    const QPoint at = middle(kImages, 3);
    press(kImages, at);
    QFile::remove(house_.imagePath({0, 0}, storedName(3)));
    house_.keyInWindow(Qt::Key_F5);
    release(kImages, at);
    expectImage(10, 11);
}

TEST_F(PlancheSelection, NothingIsChosenWhenAScanStepShowsAnotherCameraBeforeTheRelease)
{
    house_.addImages({0, 1}, 6);
    house_.openOn(12);
    const QPoint at = middle(kImages, 3);
    press(kImages, at);
    house_.fire(QStringLiteral("TimerScan"));
    house_.settle();
    release(kImages, at);
    expectImage(5, 6);
}

TEST_F(PlancheSelection, TheCameraPressedIsMeantThoughARefreshComesBeforeTheRelease)
{
    openGroup(0);
    const QPoint at = middle(kRowsOfGroup, 2);
    press(kRowsOfGroup, at);
    refreshWith({0, 2}, storedName(9));
    expectCamera(0, 3);
    release(kRowsOfGroup, at);
    expectCamera(2, 3);
}

TEST_F(PlancheSelection, NoCameraOfAnotherGroupIsChosenByARelease)
{
    house_.addImages({1, 2}, 2);
    openGroup(0);
    const QPoint at = middle(kRowsOfGroup, 2);
    press(kRowsOfGroup, at);
    house_.fire(QStringLiteral("TimerScan"));
    house_.settle();
    release(kRowsOfGroup, at);
    EXPECT_EQ(highlighted(kRowsOfGroup), QList<int>());
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(PlancheSelection, TheCellPressedIsMeantThoughARefreshComesBeforeTheRelease)
{
    house_.openOn(12);
    QTest::mousePress(&house_.cell(3), Qt::LeftButton);
    refreshWith({0, 0}, storedName(40));
    QTest::mouseRelease(&house_.cell(3), Qt::LeftButton);
    house_.settle();
    expectImage(5, 13);
    EXPECT_EQ(listed(5), storedName(5));
}

TEST_F(PlancheSelection, AKeyOfTheListOfGroupsRebuildsOnlyWhenItChangesTheRow)
{
    house_.openOn(12);
    house_.clickRow(kImages, 2);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Home, Qt::Key_Insert, Qt::Key_Shift, Qt::Key_A,
                              Qt::Key_Space, Qt::Key_Delete}) {
        house_.key(kGroups, key);
        expectImage(2, 12);
    }
    house_.key(kGroups, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(highlighted(kGroups), QList<int>{0});
}

TEST_F(PlancheSelection, AnyKeyOfTheListOfCamerasReadsTheFolderAgain)
{
    house_.openOn(12);
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Insert, Qt::Key_Shift, Qt::Key_Delete}) {
        house_.clickRow(kImages, 2);
        house_.key(kCameras, key);
        expectImage(11, 12);
    }
}

TEST_F(PlancheSelection, AListThatGetsTheKeyboardMarksNoRowByItself)
{
    openGroup(0);
    house_.clickRow(kGroups, 0); // rebuilds the group: no row is selected
    house_.find<QWidget>(kRowsOfGroup).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(row(kRowsOfGroup), -1);
    EXPECT_EQ(highlighted(kRowsOfGroup), QList<int>());
    house_.key(kRowsOfGroup, Qt::Key_Home);
    expectCamera(0, 3);
}

TEST_F(PlancheSelection, APressThatLeavesItsCellTakesItsFrameWithIt)
{
    house_.openOn(12);
    QTest::mousePress(&house_.cell(0), Qt::LeftButton);
    EXPECT_EQ(house_.framed(), QList<int>({0, 9}));
    QTest::mouseRelease(&house_.cell(0), Qt::LeftButton, {}, QPoint(-5, -5));
    house_.settle();
    expectImage(11, 12);
}

TEST_F(PlancheSelection, ADoubleClickBelowTheRowsOpensTheFolder)
{
    house_.openOn(3);
    QTest::mouseDClick(view(kImages).viewport(), Qt::LeftButton, {}, blankPart(kImages));
    house_.settle();
    ASSERT_EQ(house_.opener.opened.size(), 1);
    expectImage(2, 3);
}

TEST_F(PlancheSelection, ADoubleClickInAnEmptyListOpensTheFolder)
{
    house_.openOn(0);
    QTest::mouseDClick(view(kImages).viewport(), Qt::LeftButton, {}, blankPart(kImages));
    house_.settle();
    EXPECT_EQ(house_.opener.opened.size(), 1);
}

TEST_F(PlancheSelection, ADoubleClickWithTheRightButtonOpensNothing)
{
    house_.openOn(3);
    QTest::mouseDClick(view(kImages).viewport(), Qt::RightButton, {}, middle(kImages, 1));
    house_.settle();
    EXPECT_TRUE(house_.opener.opened.isEmpty());
    expectImage(2, 3);
}

} // namespace
} // namespace velmora::test
