// The group view in its window: what it selects at the start and after each action.
#include "SelectionTest.h"

namespace velmora::test {
namespace {

class PlancheGroup : public SelectionTest
{
protected:
    void expectNoCamera()
    {
        EXPECT_EQ(highlighted(kRowsOfGroup), QList<int>());
        EXPECT_EQ(house_.framed(), QList<int>());
        EXPECT_EQ(position(), QString());
        EXPECT_EQ(targetOfDelete(kRowsOfGroup), QString());
    }

    // The newest image of each camera that openGroup() has filled.
    void expectCells()
    {
        EXPECT_EQ(house_.shown(0), storedName(2));
        EXPECT_EQ(house_.shown(2), storedName(1));
        EXPECT_EQ(house_.shown(5), storedName(3));
    }
};

TEST_F(PlancheGroup, StartsOnTheStoredCamera)
{
    openGroup(5);
    expectCamera(5, 4);
    expectCells();
    EXPECT_EQ(targetOfDelete(kRowsOfGroup), storedName(3));
}

TEST_F(PlancheGroup, StartsOnTheStoredCameraAlsoWhenItsWindowComesBack)
{
    openGroup(5);
    house_.window.unload();
    house_.window.present();
    house_.settle();
    expectCamera(5, 4);
}

TEST_F(PlancheGroup, StartsWithTheKeyboardInItsList)
{
    openGroup(5);
    EXPECT_EQ(house_.window.focusWidget(), &view(kRowsOfGroup));
    house_.keyInWindow(Qt::Key_Home);
    expectCamera(0, 3);
    house_.keyInWindow(Qt::Key_Down);
    expectCamera(1, 0);
}

TEST_F(PlancheGroup, KeepsTheKeyboardInTheListWhenTheViewChanges)
{
    house_.openOn(3);
    ASSERT_EQ(house_.window.focusWidget(), &view(kImages));
    house_.browser.setMode(Mode::Camera, true);
    house_.settle();
    EXPECT_EQ(house_.window.focusWidget(), &view(kRowsOfGroup));
    house_.browser.setMode(Mode::Camera, false);
    house_.settle();
    EXPECT_EQ(house_.window.focusWidget(), &view(kImages));
}

TEST_F(PlancheGroup, ANewGroupSelectsNoRowAndForgetsTheCount)
{
    house_.addImages({1, 1}, 2);
    openGroup(5);
    house_.clickRow(kGroups, 1);
    expectNoCamera();
    EXPECT_FALSE(isFilmEnabled());
    house_.clickRow(kGroups, 0);
    expectNoCamera();
    EXPECT_TRUE(isFilmEnabled());
}

TEST_F(PlancheGroup, TheFirstImageOfTheCameraTurnsTheFilmButtonOnThoughNoRowIsSelected)
{
    house_.house.addCamera({1, 5}, cameraUrl({1, 5}));
    openGroup(5);
    house_.clickRow(kGroups, 1);
    ASSERT_FALSE(isFilmEnabled());
    house_.source.answer(
        cameraUrl({1, 5}),
        {pictureBytes(Qt::red), QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"), {}, {}, {}});
    house_.house.load({1, 5});
    house_.settle();
    ASSERT_TRUE(house_.cell(5).holdsPicture());
    expectNoCamera();
    EXPECT_TRUE(isFilmEnabled());
    house_.click(QStringLiteral("bFilm"));
    EXPECT_TRUE(house_.filmWindow.isVisible());
}

TEST_F(PlancheGroup, AScanStepSelectsNoRowAndForgetsTheCount)
{
    house_.house.settings.write(u"Liste1", u"LstAct", 1);
    openGroup(5);
    house_.fire(QStringLiteral("TimerScan"));
    house_.settle();
    expectNoCamera();
    EXPECT_FALSE(isFilmEnabled());
}

TEST_F(PlancheGroup, AClickOnACameraLeavesThePicturesInTheirCells)
{
    openGroup(0);
    house_.clickRow(kCameras, 2);
    expectCells();
    expectCamera(2, 2);
}

TEST_F(PlancheGroup, AKeyOnTheListOfCamerasLeavesTheKeyboardThere)
{
    openGroup(0);
    house_.find<QWidget>(kCameras).setFocus();
    house_.keyInWindow(Qt::Key_Down);
    house_.keyInWindow(Qt::Key_Down);
    expectCamera(2, 2);
    expectCells();
}

TEST_F(PlancheGroup, AnImportShowsWhatCame)
{
    openGroup(5);
    house_.house.putImage({0, 5}, storedName(59), pictureBytes(Qt::red));
    house_.browser.chooseCameraAgain();
    house_.settle();
    EXPECT_EQ(house_.shown(0), storedName(2));
    EXPECT_EQ(house_.shown(5), storedName(59));
    expectCamera(5, 5);
}

TEST_F(PlancheGroup, ReadingAgainKeepsTheCamera)
{
    openGroup(0);
    house_.clickRow(kRowsOfGroup, 5);
    house_.keyInWindow(Qt::Key_F5);
    expectCamera(5, 4);
    expectCells();
}

TEST_F(PlancheGroup, AClickOnACellBringsTheKeyboardToTheRows)
{
    openGroup(0);
    house_.find<QWidget>(kCameras).setFocus();
    house_.click(QStringLiteral("Vue2"));
    expectCamera(2, 2);
    EXPECT_EQ(house_.window.focusWidget(), &view(kRowsOfGroup));
}

TEST_F(PlancheGroup, ARightPressOnACellWithoutImageSelectsItsRow)
{
    openGroup(0);
    house_.press(QStringLiteral("Vue3"), Qt::RightButton);
    expectCamera(3, 0);
    EXPECT_FALSE(house_.find<QWidget>(QStringLiteral("ZoomImage")).isVisible());
}

TEST_F(PlancheGroup, EnterEnlargesTheSelectedCamera)
{
    openGroup(0);
    house_.clickRow(kRowsOfGroup, 5);
    house_.key(kRowsOfGroup, Qt::Key_Return);
    EXPECT_EQ(house_.shown(QStringLiteral("ZoomImage")), storedName(3));
}

TEST_F(PlancheGroup, EnterInADayBoxOfTheFilmLeavesTheGroupInItsCells)
{
    openGroup(5);
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    house_.retype(QStringLiteral("tDebut"), QStringLiteral("20060307"));
    house_.key(QStringLiteral("tDebut"), Qt::Key_Return);
    expectCells();
    EXPECT_EQ(house_.framed(), QList<int>{5});
    EXPECT_EQ(house_.data.files.ListIndex(), 0);
}

TEST_F(PlancheGroup, TwoKeysInARowMoveByTwoRowsThoughAFolderIsStillRead)
{
    openGroup(0);
    auto &list = house_.find<QListView>(kRowsOfGroup);
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(highlighted(kRowsOfGroup), QList<int>{2});
    EXPECT_EQ(house_.framed(), QList<int>{2});
    house_.settle();
    expectCamera(2, 2);
}

// Another program has given its row another address, and has not said so.
TEST_F(PlancheGroup, TheImagesOfTheSelectedCameraAreCountedOnceTheFilmIsClosed)
{
    openGroup();
    house_.click(QStringLiteral("bFilm"));
    house_.settle();
    house_.house.table.setUrl({0, 0}, cameraUrl({9, 0}));
    house_.filmWindow.close();
    house_.settle();
    EXPECT_EQ(row(kRowsOfGroup), 0);
    EXPECT_EQ(position(), QStringLiteral("0"));
}

} // namespace
} // namespace velmora::test
