// The window of one enlarged picture.
#include "ui/Zoom.h"

#include "support/StoredPictures.h"
#include "support/TempTree.h"

#include <QTest>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class ZoomTest : public testing::Test
{
protected:
    QString put(QStringView name, const QByteArray &bytes)
    {
        tree_.write(name, bytes);
        return tree_.path(name);
    }

    PictureView &picture() { return *window_.findChild<PictureView *>(QStringLiteral("iZoom")); }

    TempTree tree_;
    Zoom window_;
};

TEST_F(ZoomTest, ItsControlsHaveTheirNames)
{
    EXPECT_EQ(window_.objectName(), QStringLiteral("Zoom"));
    ASSERT_NE(window_.findChild<PictureView *>(QStringLiteral("iZoom")), nullptr);
    EXPECT_FALSE(picture().accessibleName().isEmpty());
    EXPECT_EQ(picture().accessibleDescription(), QString());
}

TEST_F(ZoomTest, ShowsAPictureAndNamesItsFile)
{
    const QString path = put(u"a.jpg", pictureBytes(Qt::red));
    window_.present(path);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(picture().accessibleDescription(), path);
    EXPECT_EQ(window_.windowTitle(), QStringLiteral("a.jpg"));
}

TEST_F(ZoomTest, OpensAgainWhenItWasMinimised)
{
    window_.present(put(u"a.jpg", pictureBytes(Qt::red)));
    window_.showMinimized();
    window_.present(put(u"b.jpg", pictureBytes(Qt::blue)));
    EXPECT_FALSE(window_.isMinimized());
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(ZoomTest, ThePictureIsSharpFromTheFirstTimeOn)
{
    const QSize size = window_.size();
    window_.present(put(u"a.jpg", finePicture(size)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    ASSERT_EQ(picture().size(), size);
    EXPECT_TRUE(isSharp(picture()));
}

TEST_F(ZoomTest, ThePictureIsLoadedForAnotherSize)
{
    window_.resize(240, 180);
    window_.present(put(u"a.jpg", finePicture({1920, 1440})));
    EXPECT_FALSE(isSharp(picture()));
    window_.resize(1920, 1440);
    EXPECT_TRUE(isSharp(picture()));
}

TEST_F(ZoomTest, AnotherFileOfThatNameIsNotLoadedForAnotherSize)
{
    const QString path = put(u"a.jpg", pictureBytes(Qt::red));
    window_.present(path);
    QFile::remove(path);
    for (const QSize more : {QSize(60, 40), QSize(120, 80)}) {
        window_.resize(window_.size() + more);
        QApplication::sendPostedEvents();
        const QImage look = picture().grab().toImage();
        EXPECT_GT(look.pixelColor(look.width() / 2, look.height() / 2).red(), 200);
        EXPECT_EQ(picture().accessibleDescription(), path);
        put(u"a.jpg", pictureBytes(Qt::blue));
    }
}

TEST_F(ZoomTest, AnotherPictureTakesItsPlace)
{
    window_.present(put(u"a.jpg", pictureBytes(Qt::red)));
    const QString second = put(u"b.jpg", pictureBytes(Qt::blue));
    window_.present(second);
    EXPECT_EQ(picture().accessibleDescription(), second);
}

TEST_F(ZoomTest, WithoutAFileNothingIsShown)
{
    window_.present({});
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(ZoomTest, AFileThatIsNoPictureIsNotNamed)
{
    window_.present(put(u"a.jpg", "no picture"));
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(picture().accessibleDescription(), QString());
}

TEST_F(ZoomTest, AClickCloses)
{
    window_.present(put(u"a.jpg", pictureBytes(Qt::red)));
    QTest::mouseClick(&picture(), Qt::LeftButton);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(ZoomTest, EscapeCloses)
{
    window_.present(put(u"a.jpg", pictureBytes(Qt::red)));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    QTest::keyClick(window_.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(ZoomTest, ComesBackAfterItWasClosed)
{
    const QString path = put(u"a.jpg", pictureBytes(Qt::red));
    window_.present(path);
    window_.close();
    window_.present(path);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(picture().accessibleDescription(), path);
}

} // namespace
} // namespace velmora::test
