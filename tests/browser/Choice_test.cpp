// Choosing a group or a camera in its list: what is stored, shown and played from then on.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class Choice : public BrowserTest
{
protected:
    void chooseGroup(int group)
    {
        browser_.chooseGroup(group);
        house_.finish();
    }

    void chooseCamera(int row)
    {
        browser_.chooseCamera(row);
        house_.finish();
    }
};

TEST_F(Choice, StoresTheGroup)
{
    chooseGroup(7);
    EXPECT_EQ(house_.stored(u"lstP"), QStringLiteral("7"));
    EXPECT_EQ(house_.stored(u"lstImg"), QString());
}

TEST_F(Choice, StoresTheCamera)
{
    chooseCamera(9);
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("9"));
    EXPECT_EQ(house_.stored(u"lstP"), QString());
}

TEST_F(Choice, KeepsTheRowWhenTheGroupChanges)
{
    house_.addImages({2, 5}, 4);
    chooseCamera(5);
    chooseGroup(2);
    EXPECT_EQ(state().camera(), (CameraAddress{2, 5}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("4 / 4"));
}

TEST_F(Choice, ShowsTheCamera)
{
    house_.addImages({0, 5}, 4);
    chooseCamera(5);
    EXPECT_EQ(house_.NbI(), QStringLiteral("4 / 4"));
    EXPECT_EQ(house_.cells().value(3), imageName(3));
}

TEST_F(Choice, HidesTheZoomImageForANewGroup)
{
    house_.addImages(kCamera, 1);
    house_.show(kCamera);
    house_.data.sheet.showZoom(house_.data.files.file(0));
    chooseGroup(1);
    EXPECT_FALSE(house_.data.sheet.isZoomVisible());
    EXPECT_TRUE(house_.data.sheet.zoomed().isNone());
}

TEST_F(Choice, KeepsTheZoomImageForANewCameraAndFollowsIt)
{
    house_.addImages(kCamera, 1);
    house_.addImages({0, 1}, 3);
    house_.show(kCamera);
    house_.data.sheet.showZoom(house_.data.files.file(0));
    chooseCamera(1);
    EXPECT_TRUE(house_.data.sheet.isZoomVisible());
    EXPECT_EQ(house_.data.sheet.zoomed().name, imageName(2));
}

TEST_F(Choice, EmptiesTheSheetForAnEmptyGroup)
{
    house_.addImages(kCamera, 5);
    house_.show(kCamera);
    house_.addCamera({1, 0});
    chooseGroup(1);
    EXPECT_EQ(house_.cells(), QStringList(kCells));
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(Choice, EmptiesTheSheetWhileTheFolderOfANewGroupIsStillRead)
{
    house_.addImages(kCamera, 5);
    house_.addFullFolder({1, 0});
    house_.show(kCamera);
    browser_.chooseGroup(1);
    ASSERT_GT(house_.capture.scope.running(), 0);
    EXPECT_EQ(house_.cells(), QStringList(kCells));
    EXPECT_EQ(house_.framed(), QList<int>());
    EXPECT_EQ(house_.NbI(), QString());
    house_.finish();
}

TEST_F(Choice, KeepsTheSheetWhileTheFolderOfANewCameraIsStillRead)
{
    house_.addImages(kCamera, 5);
    house_.addFullFolder({0, 1});
    house_.show(kCamera);
    browser_.chooseCamera(1);
    ASSERT_GT(house_.capture.scope.running(), 0);
    EXPECT_EQ(house_.cells().value(4), imageName(4));
    house_.finish();
}

TEST_F(Choice, ShowsTheGroupAgainForANewCameraInGroupViewAndFramesItsCell)
{
    house_.addImages({0, 0}, 2);
    house_.addImages({0, 3}, 4);
    house_.showGroup(0);
    chooseCamera(3);
    EXPECT_EQ(house_.cells().value(0), imageName(1));
    EXPECT_EQ(house_.cells().value(3), imageName(3));
    EXPECT_EQ(house_.framed(), QList<int>({3}));
    EXPECT_EQ(browser_.face().cameraRow, 3);
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("3"));
}

TEST_F(Choice, LeavesTheRowsForANewCameraInGroupView)
{
    house_.addImages({0, 0}, 2);
    house_.showGroup(0);
    const QStringList rows = house_.rows();
    chooseCamera(3);
    EXPECT_EQ(house_.rows(), rows);
}

TEST_F(Choice, ListsTheFilesOfANewCameraInGroupViewForTheFilm)
{
    house_.addImages({0, 3}, 4);
    state().allowReading();
    house_.showGroup(0);
    chooseCamera(3);
    EXPECT_EQ(house_.data.files.count(), 4);
    EXPECT_EQ(house_.NbI(), QStringLiteral("4"));
}

TEST_F(Choice, FramesTheSelectedCellOfACameraInGroupViewByAClickOnIt)
{
    house_.showGroup(0);
    house_.newLog();
    chooseCamera(3);
    EXPECT_EQ(house_.newLog().filter(QStringLiteral("Planche Vue_Click")),
              QStringList({QStringLiteral("Planche Vue_Click"),
                           QStringLiteral("Planche Vue_Click Fin mem faux")}));
}

TEST_F(Choice, EmptiesTheSheetAndRebuildsTheRowsForANewGroupInGroupView)
{
    house_.addImages({1, 6}, 2);
    house_.showGroup(0);
    chooseCamera(3);
    chooseGroup(1);
    EXPECT_EQ(house_.cells().value(6), imageName(1));
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(Choice, RestartsAPlayingFilmForAGroup)
{
    film_.play();
    chooseGroup(1);
    EXPECT_EQ(film_.calls.count(QStringLiteral("begin")), 1);
    EXPECT_TRUE(state().CineActif());
}

TEST_F(Choice, RestartsAPlayingFilmForACamera)
{
    film_.play();
    chooseCamera(1);
    EXPECT_EQ(film_.calls.count(QStringLiteral("begin")), 1);
}

TEST_F(Choice, LeavesAPausedFilmAlone)
{
    film_.pause();
    chooseGroup(1);
    chooseCamera(1);
    EXPECT_EQ(film_.calls, QStringList());
    EXPECT_FALSE(state().CineActif());
}

TEST_F(Choice, OpensNoFilm)
{
    chooseGroup(1);
    chooseCamera(1);
    EXPECT_FALSE(film_.open);
}

TEST_F(Choice, BeginsTheFilmAfterTheNewFolderIsListed)
{
    house_.addImages({1, 0}, 6);
    film_.play();
    QList<int> counts;
    QObject::connect(&browser_, &ImageBrowser::changed, &house_, [&] {
        if (!film_.calls.contains(QStringLiteral("begin"))) {
            counts.append(house_.data.files.count());
        }
    });
    chooseGroup(1);
    EXPECT_EQ(counts.last(), 6);
}

TEST_F(Choice, TakesTheStoredGroupAndCameraAtTheStart)
{
    house_.addImages({4, 6}, 3);
    house_.store(u"lstP", u"4");
    house_.store(u"lstImg", u"6");
    browser_.load();
    house_.finish();
    EXPECT_EQ(state().camera(), (CameraAddress{4, 6}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
}

TEST_F(Choice, TakesTheFirstCameraWhenNothingIsStored)
{
    house_.addImages(kCamera, 2);
    browser_.load();
    house_.finish();
    EXPECT_EQ(state().camera(), kCamera);
    EXPECT_EQ(house_.NbI(), QStringLiteral("2 / 2"));
}

TEST_F(Choice, TellsTheWindowOfTheStoredCamera)
{
    house_.store(u"lstP", u"4");
    const QSignalSpy changes(&browser_, &ImageBrowser::changed);
    browser_.load();
    EXPECT_GE(changes.size(), 1);
}

class StoredPosition : public BrowserTest,
                       public testing::WithParamInterface<std::pair<const char *, int>>
{
};

TEST_P(StoredPosition, IsAListPositionOrNone)
{
    const auto &[text, position] = GetParam();
    house_.store(u"lstP", QString::fromLatin1(text));
    house_.store(u"lstImg", QString::fromLatin1(text));
    browser_.load();
    house_.finish();
    EXPECT_EQ(state().camera(), (CameraAddress{position, position}));
}

INSTANTIATE_TEST_SUITE_P(Texts, StoredPosition,
                         testing::Values(std::pair("0", 0), std::pair("9", 9), std::pair("10", 0),
                                         std::pair("-1", 0), std::pair("5abc", 5),
                                         std::pair("abc", 0), std::pair("", 0),
                                         std::pair("32767", 0), std::pair("-32768", 0),
                                         std::pair("32768", 0), std::pair("99999999999", 0)));

TEST_F(Choice, WarnsOfAStoredPositionThatOverflows)
{
    house_.store(u"lstImg", u"40000");
    browser_.load();
    house_.finish();
    ASSERT_EQ(house_.capture.allTexts().size(), 1);
    EXPECT_TRUE(house_.capture.allTexts()[0].contains(QStringLiteral("lstImg")));
}

TEST_F(Choice, WarnsOfNoStoredPositionBeyondTheList)
{
    house_.store(u"lstImg", u"10");
    browser_.load();
    house_.finish();
    EXPECT_EQ(house_.capture.allTexts(), QStringList());
}

TEST_F(Choice, ReadsFoldersFromTheStartInGroupViewToo)
{
    house_.addImages({0, 4}, 3);
    state().viewSwitched(View::Group);
    browser_.begin();
    house_.finish();
    EXPECT_TRUE(state().LectureOK());
    EXPECT_EQ(house_.rows().value(4), imageName(2) + QStringLiteral("  "));
}

} // namespace
} // namespace velmora::test
