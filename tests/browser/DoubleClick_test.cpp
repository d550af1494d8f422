// Double clicks on the cells and on the list.
#include "browser/BrowserTest.h"

#include <QDir>

namespace velmora::test {
namespace {

class DoubleClick : public BrowserTest
{
protected:
    void showImages(int count, int selectedImage)
    {
        house_.addImages(kCamera, count);
        house_.show(kCamera);
        browser_.chooseFile(selectedImage);
    }

    /// Like a mouse: the click comes first.
    void doubleClick(int cell)
    {
        browser_.clickCell(cell);
        house_.finish();
        browser_.doubleClickCell(cell);
        house_.finish();
    }

    QSignalSpy opened_{&browser_, &ImageBrowser::openWanted};
};

TEST_F(DoubleClick, OpensTheImageThatItsFirstClickHasSelected)
{
    showImages(20, 10);
    doubleClick(8);
    ASSERT_EQ(opened_.size(), 1);
    EXPECT_EQ(opened_[0][0].toString(),
              house_.capture.tree.path(house_.capture.folder(kCamera) + u'/' + imageName(14)));
}

TEST_F(DoubleClick, OpensNothingOnAnEmptyCell)
{
    showImages(3, 2);
    doubleClick(7);
    EXPECT_EQ(opened_.size(), 0);
}

TEST_F(DoubleClick, EndsTheScan)
{
    showImages(3, 2);
    browser_.setMode(Mode::Scan, true);
    doubleClick(0);
    EXPECT_FALSE(browser_.face().cScan);
    EXPECT_FALSE(browser_.scanTimer().isActive());
    EXPECT_EQ(house_.stored(u"Scan"), QStringLiteral("0"));
}

TEST_F(DoubleClick, EndsTheScanOnAnEmptyCellToo)
{
    showImages(3, 2);
    browser_.setMode(Mode::Scan, true);
    doubleClick(7);
    EXPECT_FALSE(browser_.face().cScan);
    EXPECT_FALSE(browser_.face().cCamera);
}

TEST_F(DoubleClick, StoresNothingWithoutScan)
{
    showImages(3, 2);
    doubleClick(0);
    EXPECT_EQ(house_.stored(u"Scan"), QString());
    EXPECT_EQ(house_.stored(u"Camera"), QString());
}

TEST_F(DoubleClick, DoesNoMoreThanAClickInGroupView)
{
    house_.addImages({0, 6}, 4);
    house_.showGroup(0);
    browser_.setMode(Mode::Scan, true);
    doubleClick(6);
    EXPECT_EQ(opened_.size(), 0);
    EXPECT_TRUE(browser_.face().cScan);
    EXPECT_TRUE(browser_.face().cCamera);
}

TEST_F(DoubleClick, OpensTheCamerasFolderOnTheList)
{
    house_.addImages({3, 5}, 2);
    house_.show({3, 5});
    browser_.openFolder();
    ASSERT_EQ(opened_.size(), 1);
    EXPECT_EQ(QDir::cleanPath(opened_[0][0].toString()),
              house_.capture.tree.path(house_.capture.folder({3, 5})));
}

TEST_F(DoubleClick, OpensTheImageThatWasClickedThoughARefreshComesInBetween)
{
    showImages(20, 10);
    browser_.clickCell(8);
    house_.finish();
    house_.put(kCamera, imageName(50));
    browser_.setMode(Mode::Auto, true);
    browser_.follow(kCamera);
    house_.finish();
    browser_.doubleClickCell(8);
    ASSERT_EQ(opened_.size(), 1);
    EXPECT_EQ(opened_[0][0].toString(),
              house_.capture.tree.path(house_.capture.folder(kCamera) + u'/' + imageName(14)));
}

} // namespace
} // namespace velmora::test
