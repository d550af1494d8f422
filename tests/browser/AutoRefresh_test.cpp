// The browser follows what the capture stores.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class AutoRefresh : public BrowserTest
{
protected:
    void SetUp() override
    {
        house_.addImages({2, 3}, 3);
        house_.addImages({2, 4}, 1);
        house_.show({2, 3});
        browser_.setMode(Mode::Auto, true);
        house_.finish();
        house_.store(u"lstImg", u"0");
    }

    /// A new image of a camera was stored.
    void store(CameraAddress camera)
    {
        house_.put(camera, imageName(100));
        browser_.follow(camera);
        house_.finish();
    }

    [[nodiscard]] QString row(int index) const { return house_.rows().value(index); }
};

TEST_F(AutoRefresh, ShowsTheNewestImageOfTheShownCamera)
{
    browser_.chooseFile(0);
    store({2, 3});
    EXPECT_EQ(house_.NbI(), QStringLiteral("4 / 4"));
    EXPECT_EQ(house_.cells().value(3), imageName(100));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("3"));
}

TEST_F(AutoRefresh, LeavesTheDisplayForAnotherRow)
{
    browser_.chooseFile(0);
    store({2, 4});
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 3"));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("0"));
}

TEST_F(AutoRefresh, LeavesTheDisplayForTheSameRowOfAnotherGroup)
{
    house_.addCamera({1, 3});
    store({1, 3});
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("0"));
}

TEST_F(AutoRefresh, LeavesTheDisplayWhileAutoIsOff)
{
    browser_.setMode(Mode::Auto, false);
    house_.finish();
    store({2, 3});
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
}

class FirstImage : public AutoRefresh
{
protected:
    void SetUp() override
    {
        house_.addImages({2, 3}, 3);
        house_.addCamera({2, 5});
        house_.show({2, 5});
    }
};

TEST_F(FirstImage, OfTheShownCameraAppearsByItself)
{
    EXPECT_EQ(house_.NbI(), QStringLiteral("0"));
    store({2, 5});
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 1"));
    EXPECT_EQ(house_.cells().value(0), imageName(100));
    EXPECT_EQ(house_.framed(), QList<int>{0});
    EXPECT_TRUE(browser_.face().isFilmEnabled);
}

TEST_F(FirstImage, IsTheOnlyOneThatDoes)
{
    store({2, 5});
    house_.put({2, 5}, imageName(101));
    browser_.follow({2, 5});
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 1"));
}

TEST_F(FirstImage, OfAnotherCameraDoesNot)
{
    house_.newLog();
    store({2, 6});
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(FirstImage, OfACameraThatHasJustGotItsAddressAppears)
{
    house_.show({2, 7});
    house_.addCamera({2, 7});
    store({2, 7});
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 1"));
}

TEST_F(FirstImage, OfARowWithTheSameAddressAppears)
{
    house_.capture.addCamera({4, 0}, house_.capture.table.url({2, 5}));
    store({4, 0});
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 1"));
    EXPECT_EQ(state().camera(), (CameraAddress{2, 5}));
}

TEST_F(FirstImage, AppearsInTheGroupForARowWithTheSameAddress)
{
    house_.capture.addCamera({4, 0}, house_.capture.table.url({2, 5}));
    house_.showGroup(2);
    store({4, 0});
    EXPECT_EQ(house_.cells().value(5), imageName(100));
    store({4, 1});
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(FirstImage, RestartsAFilmThatHadNone)
{
    film_.play();
    store({2, 5});
    EXPECT_EQ(film_.calls.last(), QStringLiteral("begin"));
    film_.calls.clear();
    store({2, 4});
    EXPECT_EQ(film_.calls, QStringList());
}

TEST_F(FirstImage, LeavesAPausedFilmAlone)
{
    film_.pause();
    store({2, 5});
    EXPECT_FALSE(film_.calls.contains(QStringLiteral("begin")));
}

TEST_F(FirstImage, RestartsAFilmThatHadNoneInTheGroup)
{
    house_.showGroup(2);
    browser_.chooseCameraRow(5);
    house_.finish();
    film_.play();
    store({2, 5});
    EXPECT_EQ(film_.calls.last(), QStringLiteral("begin"));
    EXPECT_EQ(house_.data.files.count(), 1);
}

TEST_F(FirstImage, OfAnotherCameraOfTheGroupLeavesTheFilmAlone)
{
    house_.showGroup(2);
    browser_.chooseCameraRow(3);
    house_.finish();
    film_.play();
    store({2, 5});
    EXPECT_EQ(film_.calls, QStringList());
}

TEST_F(FirstImage, AppearsInTheGroupWithoutTakingTheSelection)
{
    house_.showGroup(2);
    browser_.chooseCameraRow(3);
    house_.finish();
    store({2, 5});
    EXPECT_EQ(house_.cells().value(5), imageName(100));
    EXPECT_EQ(row(5), imageName(100) + QStringLiteral("  "));
    EXPECT_EQ(browser_.face().cameraRow, 3);
    EXPECT_EQ(house_.framed(), QList<int>{3});
    store({2, 3});
    EXPECT_NE(row(3), imageName(100) + QStringLiteral("  "));
}

TEST_F(AutoRefresh, ShowsTheNewImageOfTheShownGroupAndSelectsItsCamera)
{
    house_.showGroup(2);
    store({2, 4});
    EXPECT_EQ(row(4), imageName(100) + QStringLiteral("  "));
    EXPECT_EQ(house_.cells().value(4), imageName(100));
    EXPECT_EQ(browser_.face().cameraRow, 4);
    EXPECT_EQ(state().camera(), (CameraAddress{2, 4}));
    EXPECT_EQ(house_.framed(), QList<int>({4}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("2"));
}

TEST_F(AutoRefresh, LeavesTheGroupViewForAnotherGroup)
{
    house_.showGroup(2);
    house_.newLog();
    house_.addCamera({1, 4});
    store({1, 4});
    EXPECT_EQ(house_.newLog(), QStringList());
    EXPECT_EQ(browser_.face().cameraRow, -1);
}

TEST_F(AutoRefresh, RebuildsTheGroupOnceForEachStoredImage)
{
    house_.showGroup(2);
    house_.newLog();
    store({2, 4});
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("Planche DirImage"),
                                            QStringLiteral("Planche DirImage Fin")}));
}

TEST_F(AutoRefresh, DoesNothingForWhatIsNotOnShow)
{
    house_.addCamera({3, 4});
    house_.newLog();
    store({2, 4});
    EXPECT_EQ(house_.newLog(), QStringList());
    house_.showGroup(2);
    house_.newLog();
    store({3, 4});
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(AutoRefresh, LooksAgainWhetherItsGroupIsStillShownWhenItsTurnComes)
{
    house_.addFullFolder({2, 9});
    browser_.setMode(Mode::Camera, true);
    ASSERT_TRUE(state().DirCamEnCours());
    browser_.follow({2, 4});
    browser_.chooseGroup(5);
    house_.finish();
    EXPECT_EQ(state().camera(), (CameraAddress{5, 3}));
    EXPECT_EQ(browser_.face().cameraRow, -1);
}

TEST_F(AutoRefresh, ShowsAPictureThatTheCaptureHasFetched)
{
    QObject::connect(&house_.capture.store, &ImageStore::imageStored, &browser_,
                     &ImageBrowser::follow);
    house_.source.answer(cameraUrl({2, 3}), {QByteArray(2000, 'x'),
                                             QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"),
                                             QStringLiteral("image/jpeg"),
                                             {},
                                             {}});
    house_.capture.load({2, 3});
    ASSERT_EQ(house_.capture.stored(), QStringList({QStringLiteral("2:3")}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("4 / 4"));
    EXPECT_EQ(house_.cells().value(3), QStringLiteral("20060307_1405090714.jpg"));
}

TEST_F(AutoRefresh, RestartsAPlayingFilmForTheShownCamera)
{
    film_.play();
    store({2, 3});
    EXPECT_EQ(film_.calls.count(QStringLiteral("begin")), 1);
}

} // namespace
} // namespace velmora::test
