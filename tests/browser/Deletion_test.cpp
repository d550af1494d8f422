// Images of the camera on show are deleted because of their age.
#include "browser/BrowserTest.h"

#include <QFile>

namespace velmora::test {
namespace {

class Deletion : public BrowserTest
{
protected:
    void SetUp() override
    {
        house_.addImages(kCamera, 30);
        house_.show(kCamera);
    }

    void deleteFirst(int count, CameraAddress camera = kCamera)
    {
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(QFile::remove(
                house_.capture.tree.path(house_.capture.folder(camera) + u'/' + imageName(i))));
        }
        browser_.showDeletion(camera);
        house_.finish();
    }
};

TEST_F(Deletion, KeepsTheSelectedImage)
{
    browser_.chooseFile(20);
    deleteFirst(5);
    EXPECT_EQ(house_.NbI(), QStringLiteral("16 / 25"));
    EXPECT_EQ(house_.data.files.selected().name, imageName(20));
    EXPECT_EQ(house_.cells(), imageNames(16, 10));
}

TEST_F(Deletion, SelectsTheNewestWhenTheSelectedOneIsGone)
{
    browser_.chooseFile(2);
    deleteFirst(5);
    EXPECT_EQ(house_.NbI(), QStringLiteral("25 / 25"));
}

TEST_F(Deletion, LeavesAnotherCamerasListAlone)
{
    const CameraAddress other{0, 1};
    house_.addImages(other, 3);
    browser_.chooseFile(4);
    house_.newLog();
    deleteFirst(2, other);
    EXPECT_EQ(house_.NbI(), QStringLiteral("5 / 30"));
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(Deletion, ShowsWhatIsLeftOfAFolderThatAnotherRowHasToo)
{
    const CameraAddress twin{0, 1};
    house_.capture.addCamera(twin, house_.capture.table.url(kCamera));
    ASSERT_EQ(house_.capture.folder(twin), house_.capture.folder(kCamera));
    deleteFirst(5, twin);
    EXPECT_EQ(house_.data.files.count(), 25);
}

TEST_F(Deletion, LeavesTheListOfAFilmAlone)
{
    browser_.toggleFilm();
    house_.finish();
    ASSERT_TRUE(state().CineActif());
    deleteFirst(5);
    EXPECT_EQ(house_.data.files.count(), 30);
}

TEST_F(Deletion, LeavesTheGroupAlone)
{
    house_.showGroup(0);
    house_.newLog();
    deleteFirst(5);
    EXPECT_EQ(house_.rows().size(), kRows);
    EXPECT_EQ(house_.newLog(), QStringList());
    EXPECT_EQ(house_.NbI(), QString()) << "no row is selected";
}

TEST_F(Deletion, CountsWhatIsLeftBehindTheSelectedRowOfTheGroup)
{
    house_.showGroup(0);
    browser_.chooseCameraRow(0);
    house_.finish();
    ASSERT_EQ(house_.NbI(), QStringLiteral("30"));
    deleteFirst(5);
    EXPECT_EQ(house_.NbI(), QStringLiteral("25"));
    EXPECT_EQ(browser_.face().cameraRow, 0);
}

// Of a day's images the group view shows the one that was written last, while the one with the
// latest date stays.
TEST_F(Deletion, PutsTheNextInThePlaceOfAnImageThatTheGroupViewShowed)
{
    house_.put(kCamera, imageName(3), QStringLiteral("2030-01-01T00:00:00"));
    house_.showGroup(0);
    browser_.chooseCameraRow(0);
    house_.finish();
    ASSERT_EQ(state().DerniereImage(0).name, imageName(3));
    deleteFirst(5);
    EXPECT_NE(state().DerniereImage(0).name, imageName(3));
    EXPECT_EQ(house_.rows().first().trimmed(), state().DerniereImage(0).name);
    EXPECT_EQ(browser_.face().cameraRow, 0);
}

TEST_F(Deletion, YieldsToACameraThatIsChosenMeanwhile)
{
    const CameraAddress other{0, 1};
    house_.addImages(other, 3);
    browser_.showDeletion(kCamera);
    browser_.chooseCamera(other.row);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
}

TEST_F(Deletion, ShowsWhatIsLeftOnceTheFilmIsClosed)
{
    browser_.toggleFilm();
    house_.finish();
    ASSERT_TRUE(state().CineActif());
    deleteFirst(5);
    browser_.toggleFilm();
    house_.finish();
    ASSERT_FALSE(state().CineActif());
    EXPECT_EQ(house_.data.files.count(), 25);
}

// A film of one camera plays beside the newest images of all.
TEST_F(Deletion, PutsTheNextInThePlaceOfAnotherCamerasImageOnceTheFilmIsClosed)
{
    const CameraAddress played{0, 1};
    house_.addImages(played, 3);
    house_.put(kCamera, imageName(3), QStringLiteral("2030-01-01T00:00:00"));
    house_.showGroup(0);
    browser_.chooseCameraRow(played.row);
    browser_.toggleFilm();
    house_.finish();
    ASSERT_TRUE(state().CineActif());
    ASSERT_EQ(state().DerniereImage(0).name, imageName(3));
    deleteFirst(5);
    EXPECT_EQ(state().DerniereImage(0).name, imageName(3));
    browser_.toggleFilm();
    house_.finish();
    ASSERT_FALSE(state().CineActif());
    EXPECT_NE(state().DerniereImage(0).name, imageName(3));
    EXPECT_EQ(browser_.face().cameraRow, played.row);
    EXPECT_EQ(house_.data.files.count(), 3);
}

} // namespace
} // namespace velmora::test
