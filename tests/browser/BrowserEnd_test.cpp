// The program ends while the browser works.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

const CameraAddress kFull{0, 1};

class BrowserEnd : public BrowserTest
{
protected:
    void SetUp() override { house_.addFullFolder(kFull); }
};

TEST_F(BrowserEnd, GivesUpTheFolderThatIsBeingRead)
{
    browser_.chooseCamera(kFull.row);
    ASSERT_GT(house_.capture.scope.running(), 0);
    browser_.chooseCameraRow(2);
    browser_.close();
    house_.finish();
    EXPECT_EQ(house_.capture.scope.running(), 0);
    EXPECT_EQ(house_.data.files.count(), 0);
    EXPECT_EQ(browser_.face().cameraRow, -1);
}

TEST_F(BrowserEnd, GivesUpTheGroupThatIsBeingFilled)
{
    browser_.setMode(Mode::Camera, true);
    browser_.close();
    house_.finish();
    EXPECT_EQ(house_.rows().size(), kFull.row);
    EXPECT_FALSE(state().DirCamEnCours());
}

TEST_F(BrowserEnd, BeginsNothingAfterwards)
{
    browser_.close();
    house_.newLog();
    browser_.refresh();
    browser_.chooseGroup(3);
    browser_.chooseCamera(3);
    browser_.setMode(Mode::Auto, true);
    browser_.setMode(Mode::Camera, true);
    browser_.toggleFilm();
    browser_.load();
    browser_.begin();
    house_.fireScan();
    EXPECT_EQ(house_.capture.scope.running(), 0);
    EXPECT_EQ(house_.newLog(), QStringList());
    EXPECT_EQ(house_.stored(u"lstP"), QString());
    EXPECT_EQ(film_.calls, QStringList());
}

} // namespace
} // namespace velmora::test
