// The three modes: what a click on each stores and does, and how they come back at the next start.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

class Modes : public BrowserTest
{
protected:
    void set(Mode mode, bool on)
    {
        browser_.setMode(mode, on);
        house_.finish();
    }

    void load()
    {
        browser_.load();
        house_.finish();
    }

    [[nodiscard]] QList<bool> on() const
    {
        return {browser_.face().cAuto, browser_.face().cCamera, browser_.face().cScan};
    }
};

TEST_F(Modes, StoreEachClickAsOneOrZero)
{
    const QList<std::pair<Mode, QString>> keys = {{Mode::Auto, QStringLiteral("Auto")},
                                                  {Mode::Camera, QStringLiteral("Camera")},
                                                  {Mode::Scan, QStringLiteral("Scan")}};
    for (const auto &[mode, key] : keys) {
        set(mode, true);
        EXPECT_EQ(house_.stored(key), QStringLiteral("1"));
        EXPECT_TRUE(on().value(static_cast<int>(mode)));
        set(mode, false);
        EXPECT_EQ(house_.stored(key), QStringLiteral("0"));
        EXPECT_FALSE(on().value(static_cast<int>(mode)));
    }
}

TEST_F(Modes, TellTheWindowOfEachClick)
{
    QList<QList<bool>> told;
    QObject::connect(&browser_, &ImageBrowser::changed, &house_, [&] { told.append(on()); });
    set(Mode::Auto, true);
    EXPECT_EQ(told.value(0), QList<bool>({true, false, false}));
    told.clear();
    set(Mode::Scan, true);
    EXPECT_EQ(told, QList<QList<bool>>({{true, false, true}}));
}

TEST_F(Modes, RefreshTheCameraAtOnceWhenAutoIsClicked)
{
    house_.addImages({0, 2}, 3);
    state().cameraChosen({state().camera().group, 2});
    set(Mode::Auto, true);
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("2"));
}

TEST_F(Modes, RefreshTheCameraWhenAutoIsSwitchedOffToo)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    house_.put(kCamera, imageName(8));
    set(Mode::Auto, false);
    EXPECT_EQ(house_.NbI(), QStringLiteral("4 / 4"));
}

TEST_F(Modes, RefreshTheGroupAtOnceWhenAutoIsClickedInGroupView)
{
    house_.showGroup(0);
    house_.addImages({0, 2}, 3);
    house_.store(u"lstImg", u"7");
    set(Mode::Auto, true);
    EXPECT_EQ(house_.rows().value(2), imageName(2) + QStringLiteral("  "));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("7"));
}

TEST_F(Modes, ShowTheGroupWhenCameraIsTicked)
{
    house_.addImages({0, 2}, 3);
    set(Mode::Camera, true);
    EXPECT_EQ(state().view(), View::Group);
    EXPECT_EQ(house_.rows().value(2), imageName(2) + QStringLiteral("  "));
}

TEST_F(Modes, ShowTheCameraWhenCameraIsUnticked)
{
    house_.addImages({0, 2}, 3);
    state().cameraChosen({state().camera().group, 2});
    set(Mode::Camera, true);
    set(Mode::Camera, false);
    EXPECT_EQ(state().view(), View::Camera);
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
    EXPECT_EQ(house_.framed(), QList<int>({2}));
}

TEST_F(Modes, ClearPlaceAndCountWithEachChangeOfTheView)
{
    house_.addImages({0, 0}, 3);
    browser_.chooseCamera(0);
    house_.finish();
    ASSERT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
    set(Mode::Camera, true);
    EXPECT_EQ(house_.NbI(), QString());
    set(Mode::Camera, false);
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
}

TEST_F(Modes, StoreTheGroupWithAClickOnCamera)
{
    state().cameraChosen({6, state().camera().row});
    set(Mode::Camera, true);
    EXPECT_EQ(house_.stored(u"lstP"), QStringLiteral("6"));
}

TEST_F(Modes, HideTheZoomImageWhenTheViewChanges)
{
    house_.addImages(kCamera, 1);
    house_.show(kCamera);
    for (const bool groupView : {true, false}) {
        house_.data.sheet.showZoom({QStringLiteral("C:\\in\\"), imageName(0)});
        set(Mode::Camera, groupView);
        EXPECT_FALSE(house_.data.sheet.isZoomVisible()) << groupView;
    }
}

TEST_F(Modes, PutTodayAndNowIntoTheSearchWhenCameraIsTicked)
{
    const QSignalSpy texts(&browser_, &ImageBrowser::searchTextsChanged);
    set(Mode::Camera, true);
    ASSERT_EQ(texts.size(), 1);
    EXPECT_EQ(texts[0][0].toString(), QStringLiteral("07/03/2006"));
    EXPECT_EQ(texts[0][1].toString(), QStringLiteral("14:05:09"));
}

TEST_F(Modes, LeaveTheSearchWhenCameraIsUnticked)
{
    set(Mode::Camera, true);
    const QSignalSpy texts(&browser_, &ImageBrowser::searchTextsChanged);
    set(Mode::Camera, false);
    EXPECT_EQ(texts.size(), 0);
}

TEST_F(Modes, RunTheWalksTimerExactlyWhileScanIsTicked)
{
    EXPECT_FALSE(browser_.scanTimer().isActive());
    set(Mode::Scan, true);
    EXPECT_TRUE(browser_.scanTimer().isActive());
    set(Mode::Scan, false);
    EXPECT_FALSE(browser_.scanTimer().isActive());
}

TEST_F(Modes, WalkEveryTenSeconds)
{
    EXPECT_EQ(browser_.scanTimer().interval(), 10000);
    EXPECT_FALSE(browser_.scanTimer().isSingleShot());
    EXPECT_EQ(browser_.scanTimer().objectName(), QStringLiteral("TimerScan"));
}

TEST_F(Modes, LeaveTheDisplayWhenScanIsClicked)
{
    house_.addImages(kCamera, 3);
    house_.show(kCamera);
    browser_.chooseFile(0);
    house_.newLog();
    set(Mode::Scan, true);
    EXPECT_EQ(house_.newLog(), QStringList());
    EXPECT_EQ(selected(), 0);
}

TEST_F(Modes, AreAllOffWhenNothingIsStored)
{
    load();
    EXPECT_EQ(on(), QList<bool>({false, false, false}));
    EXPECT_FALSE(browser_.scanTimer().isActive());
}

TEST_F(Modes, ComeBackAsTheyWereStored)
{
    house_.addImages({0, 2}, 3);
    house_.store(u"Auto", u"1");
    house_.store(u"Camera", u"1");
    house_.store(u"Scan", u"1");
    load();
    EXPECT_EQ(on(), QList<bool>({true, true, true}));
    EXPECT_EQ(state().view(), View::Group);
    EXPECT_TRUE(browser_.scanTimer().isActive());
    EXPECT_EQ(house_.rows().value(2), imageName(2) + QStringLiteral("  "));
}

TEST_F(Modes, ComeBackEachOnItsOwn)
{
    house_.store(u"Scan", u"1");
    load();
    EXPECT_EQ(on(), QList<bool>({false, false, true}));
}

TEST_F(Modes, ComeBackWithAnyNumberThatIsNotZero)
{
    house_.store(u"Auto", u"-1");
    house_.store(u"Camera", u"0abc");
    house_.store(u"Scan", u"2 x");
    load();
    EXPECT_EQ(on(), QList<bool>({true, false, true}));
}

TEST_F(Modes, PutTodayAndNowIntoTheSearchAtTheStart)
{
    const QSignalSpy texts(&browser_, &ImageBrowser::searchTextsChanged);
    load();
    ASSERT_EQ(texts.size(), 1);
    EXPECT_EQ(texts[0][0].toString(), QStringLiteral("07/03/2006"));
    EXPECT_EQ(texts[0][1].toString(), QStringLiteral("14:05:09"));
}

TEST_F(Modes, HideTheZoomImageAtTheStart)
{
    house_.data.sheet.showZoom({QStringLiteral("C:\\in\\"), imageName(0)});
    load();
    EXPECT_FALSE(house_.data.sheet.isZoomVisible());
}

TEST_F(Modes, EndTheWalkWhenTheWindowCloses)
{
    set(Mode::Scan, true);
    browser_.unload();
    EXPECT_FALSE(browser_.scanTimer().isActive());
}

TEST_F(Modes, BeginNoWalkInAWindowThatWasClosedBeforeItsFolderWasRead)
{
    house_.addFullFolder(kCamera);
    house_.store(u"Scan", u"1");
    browser_.load();
    browser_.unload();
    house_.finish();
    EXPECT_FALSE(browser_.scanTimer().isActive());
}

TEST_F(Modes, BeginTheWalkInAWindowThatWasClosedAndReopenedBeforeItsFolderWasRead)
{
    house_.addFullFolder(kCamera);
    house_.store(u"Scan", u"1");
    browser_.load();
    browser_.unload();
    browser_.load();
    house_.finish();
    EXPECT_TRUE(browser_.scanTimer().isActive());
}

TEST_F(Modes, SetTheTickCounterToFiftyFiveForAClickOnTheCountdown)
{
    house_.capture.scheduler.setTickCounter(12);
    browser_.ctrT_Click();
    EXPECT_EQ(house_.capture.scheduler.ticksLeft(), 5);
}

TEST_F(Modes, AreOffAgainWhenThatWasStoredWhileTheWindowWasClosed)
{
    house_.addImages(kCamera, 3);
    for (const auto *const key : {u"Auto", u"Camera", u"Scan"}) {
        house_.store(key, u"1");
    }
    load();
    ASSERT_EQ(on(), QList<bool>({true, true, true}));
    browser_.unload();
    for (const auto *const key : {u"Auto", u"Camera", u"Scan"}) {
        house_.store(key, u"0");
    }
    load();
    EXPECT_EQ(on(), QList<bool>({false, false, false}));
    EXPECT_EQ(state().view(), View::Camera);
    EXPECT_FALSE(browser_.scanTimer().isActive());
    EXPECT_EQ(house_.stored(u"Scan"), QStringLiteral("0"));
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
}

} // namespace
} // namespace velmora::test
