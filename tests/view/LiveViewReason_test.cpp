// How the live view affects the lamp of its row, what it says when there is no picture, and the
// enlarging of the stored image.
#include "LiveViewTest.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class LiveReason : public LiveViewTest
{
protected:
    [[nodiscard]] LampColour lamp(int row) const { return house_.page.row(row).lamp; }

    // The row's lamp before the live view touches it.
    void startGreen(CameraAddress camera = kShown)
    {
        house_.page.showLamp(camera, LampColour::Green);
        source_.answer(cameraUrl(camera), delayedReply(2s));
    }
};

TEST_F(LiveReason, TheLampGoesBackWhenThePictureIsThere)
{
    startGreen();
    begin(kShown, cameraUrl(kShown));
    EXPECT_EQ(lamp(7), LampColour::Orange);
    clock_.advance(3s);
    EXPECT_EQ(lamp(7), LampColour::Green);
}

TEST_F(LiveReason, TheLampGoesBackWhenThereIsNone)
{
    startGreen();
    source_.answer(cameraUrl(kShown), failedReply());
    show();
    EXPECT_EQ(lamp(7), LampColour::Green);
}

TEST_F(LiveReason, TheLampGoesBackWhenAnotherCameraIsShown)
{
    startGreen();
    add({0, 3}, delayedReply(2s));
    begin(kShown, cameraUrl(kShown));
    begin({0, 3}, cameraUrl({0, 3}));
    EXPECT_EQ(lamp(7), LampColour::Green);
    EXPECT_EQ(lamp(3), LampColour::Orange);
}

TEST_F(LiveReason, TheLampGoesBackToWhatTheCaptureFoundMeanwhile)
{
    startGreen();
    begin(kShown, cameraUrl(kShown));
    house_.page.showLoading(kShown);
    house_.page.showLamp(kShown, LampColour::Red);
    clock_.advance(3s);
    EXPECT_EQ(lamp(7), LampColour::Red);
}

TEST_F(LiveReason, TheLampOfAnotherGroupIsLeftAlone)
{
    add({3, 7});
    startGreen();
    begin(kShown, cameraUrl(kShown));
    house_.setValue(u"SB", {3, 7}, kRed);
    house_.showGroup(3);
    clock_.advance(3s);
    EXPECT_EQ(lamp(7), LampColour::Red);
}

// By a command, or another program that stores a list.
TEST_F(LiveReason, TheLampOfACameraThatIsRemovedMeanwhileStaysRed)
{
    startGreen();
    begin(kShown, cameraUrl(kShown));
    house_.table.setUrl(kShown, u"");
    house_.engine.adoptSettings();
    EXPECT_EQ(lamp(7), LampColour::Red);
    clock_.advance(3s);
    EXPECT_EQ(lamp(7), LampColour::Red);
}

TEST_F(LiveReason, TheLampOfAnotherCameraThatGotTheRowMeanwhileIsItsOwn)
{
    startGreen();
    begin(kShown, cameraUrl(kShown));
    house_.table.setUrl(kShown, u"http://other/x.jpg");
    house_.setValue(u"SB", kShown, kRed);
    house_.engine.adoptSettings();
    clock_.advance(3s);
    EXPECT_EQ(lamp(7), LampColour::Red);
}

// Any setting, say.
TEST_F(LiveReason, TheLampStaysOrangeWhenTheSettingsAreReadAgain)
{
    startGreen();
    begin(kShown, cameraUrl(kShown));
    house_.engine.adoptSettings();
    EXPECT_EQ(lamp(7), LampColour::Orange);
}

TEST_F(LiveReason, TheLampGoesBackToWhatWasStoredMeanwhile)
{
    startGreen();
    begin(kShown, cameraUrl(kShown));
    house_.setValue(u"SB", kShown, kRed);
    house_.engine.adoptSettings();
    EXPECT_EQ(lamp(7), LampColour::Orange);
    clock_.advance(3s);
    EXPECT_EQ(lamp(7), LampColour::Red);
}

TEST_F(LiveReason, TheLampOfACameraBeingCapturedStaysOrangeWhenTheSettingsAreReadAgain)
{
    startGreen();
    house_.beginTick();
    ASSERT_EQ(lamp(7), LampColour::Orange);
    house_.engine.adoptSettings();
    EXPECT_EQ(lamp(7), LampColour::Orange);
    clock_.advance(3s);
    EXPECT_EQ(lamp(7), LampColour::Green);
}

TEST_F(LiveReason, ThePicturesOfACameraThatIsRemovedGo)
{
    source_.answer(cameraUrl(kShown), goodReply());
    show();
    ASSERT_FALSE(live_.livePicture().isEmpty());
    house_.table.setUrl(kShown, u"");
    house_.engine.adoptSettings();
    EXPECT_TRUE(live_.livePicture().isEmpty());
}

TEST_F(LiveReason, IsNotThatOfACameraThatWasRemoved)
{
    source_.answer(cameraUrl(kShown), failedReply());
    show();
    house_.table.setUrl(kShown, u"");
    house_.engine.adoptSettings();
    EXPECT_EQ(live_.reason(kShown), QString());
}

TEST_F(LiveReason, IsNotThatOfTheCameraThatHadTheRowBefore)
{
    source_.answer(cameraUrl(kShown), failedReply());
    show();
    house_.table.setUrl(kShown, u"http://other/x.jpg");
    house_.engine.adoptSettings();
    EXPECT_EQ(live_.reason(kShown), QString());
}

TEST_F(LiveReason, SaysWhyThereIsNoPicture)
{
    source_.answer(cameraUrl(kShown), failedReply());
    show();
    EXPECT_EQ(live_.reason(kShown), QStringLiteral("the camera is out"));
    EXPECT_EQ(live_.reason({0, 3}), QString());
}

TEST_F(LiveReason, SaysThatWhatComesIsNoPicture)
{
    source_.answer(cameraUrl(kShown), {"<html>", {}, QStringLiteral("text/html"), {}, {}});
    show();
    EXPECT_EQ(live_.reason(kShown), QStringLiteral("not a picture (text/html)"));
}

TEST_F(LiveReason, TellsANewcomerWhatAnAddressLooksLike)
{
    answer(QStringLiteral("http://10.0.0.5/"), "<html>");
    show(QStringLiteral("10.0.0.5"));
    EXPECT_TRUE(live_.reason(kShown).contains(u"/snapshot.jpg"))
        << live_.reason(kShown).toStdString();
}

TEST_F(LiveReason, IsTakenBackWhenThePictureComes)
{
    source_.answer(cameraUrl(kShown), failedReply());
    show();
    int told = 0;
    QObject::connect(&live_, &LiveView::reasonChanged, &live_, [&told] { ++told; });
    source_.answer(cameraUrl(kShown), goodReply());
    show();
    EXPECT_EQ(live_.reason(kShown), QString());
    EXPECT_EQ(told, 1);
}

TEST_F(LiveReason, IsTakenBackByAnotherGroup)
{
    source_.answer(cameraUrl(kShown), failedReply());
    show();
    house_.showGroup(4);
    EXPECT_EQ(live_.reason(kShown), QString());
}

class Enlarge : public LiveViewTest
{
protected:
    Enlarge()
    {
        QObject::connect(&live_, &LiveView::zoomWanted, &live_,
                         [this](const QString &path) { enlarged_.append(path); });
    }

    void click()
    {
        live_.iTarget_Click({house_.page.group(), house_.page.currentRow()});
        clock_.advance(0ms);
    }

    QStringList enlarged_;
};

TEST_F(Enlarge, ShowsWhatTheFolderHoldsAtThatMoment)
{
    house_.page.clickSource(7, cameraUrl(kShown));
    house_.putImage(kShown, QStringLiteral("20060307_1405090714.jpg"));
    show();
    house_.putImage(kShown, QStringLiteral("20060308_1405090714.jpg"));
    click();
    EXPECT_EQ(enlarged_, QStringList{imagePath(QStringLiteral("20060308_1405090714.jpg"))});
}

TEST_F(Enlarge, ShowsTheRowThatTheGroupRemembers)
{
    add({4, 2});
    house_.putImage({4, 2}, QStringLiteral("20060307_1405090714.jpg"));
    house_.settings.write(u"Control", u"MemSource4", 12);
    house_.showGroup(4);
    click();
    EXPECT_EQ(enlarged_, QStringList{imagePath(QStringLiteral("20060307_1405090714.jpg"), {4, 2})});
}

TEST_F(Enlarge, ShowsTheCameraOnShowWhateverIsCapturedMeanwhile)
{
    add({0, 2});
    house_.putImage(kShown, QStringLiteral("20060307_1405090714.jpg"));
    house_.putImage({0, 2}, QStringLiteral("20060308_1405090714.jpg"));
    show();
    house_.page.showLoading({0, 2});
    click();
    EXPECT_EQ(enlarged_, QStringList{imagePath(QStringLiteral("20060307_1405090714.jpg"))});
}

TEST_F(Enlarge, ShowsNothingOfAnEmptyFolder)
{
    click();
    EXPECT_EQ(enlarged_, QStringList());
}

} // namespace
} // namespace velmora::test
