// The walk through groups and cameras, one step every ten seconds.
#include "browser/BrowserTest.h"

namespace velmora::test {
namespace {

constexpr int kTicksADay = 24 * 60 * 6;

class ScanTimer : public BrowserTest
{
protected:
    void tick()
    {
        house_.fireScan();
        house_.finish();
    }

    void activate(int group, QStringView value) const
    {
        house_.capture.settings.write(listSection(group), u"LstAct", value);
    }

    void activateAll() const
    {
        for (int group = 0; group < kGroups; ++group) {
            activate(group, u"1");
        }
    }

    void showGroup(int group)
    {
        house_.showGroup(group);
        house_.newLog();
    }
};

TEST_F(ScanTimer, ShowsTheNextGroupInGroupView)
{
    activateAll();
    house_.addImages({4, 2}, 3);
    showGroup(3);
    tick();
    EXPECT_EQ(state().camera().group, 4);
    EXPECT_EQ(house_.rows().value(2), imageName(2) + QStringLiteral("  "));
}

TEST_F(ScanTimer, SkipsGroupsThatAreOff)
{
    activate(3, u"1");
    activate(7, u"1");
    showGroup(3);
    tick();
    EXPECT_EQ(state().camera().group, 7);
    tick();
    EXPECT_EQ(state().camera().group, 3);
}

TEST_F(ScanTimer, GoesOnWithGroupZeroBehindGroupNine)
{
    activateAll();
    showGroup(9);
    tick();
    EXPECT_EQ(state().camera().group, 0);
}

TEST_F(ScanTimer, TakesAnyNumberButZeroAsOn)
{
    activate(2, u"2");
    activate(4, u"-1");
    activate(6, u"abc");
    activate(8, u"0");
    showGroup(0);
    QList<int> walked;
    for (int step = 0; step < 3; ++step) {
        tick();
        walked.append(state().camera().group);
    }
    EXPECT_EQ(walked, QList<int>({2, 4, 2}));
}

TEST_F(ScanTimer, StaysOnItsGroupAfterAFullTurnWithoutAnyThatIsOn)
{
    showGroup(6);
    tick();
    EXPECT_EQ(state().camera().group, 6);
}

TEST_F(ScanTimer, KeepsTheRowAndStoresNothingInGroupView)
{
    activateAll();
    state().cameraChosen({state().camera().group, 5});
    showGroup(3);
    house_.store(u"lstP", u"9");
    house_.store(u"lstImg", u"9");
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{4, 5}));
    EXPECT_EQ(house_.stored(u"lstP"), QStringLiteral("9"));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("9"));
}

TEST_F(ScanTimer, FillsTheGroupViewWithoutAnotherRebuild)
{
    activateAll();
    showGroup(3);
    tick();
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(ScanTimer, ShowsTheNextCameraInCameraView)
{
    activateAll();
    house_.addImages({3, 5}, 4);
    house_.show({3, 4});
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{3, 5}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("4 / 4"));
}

TEST_F(ScanTimer, StoresTheCameraButNotTheGroupInCameraView)
{
    activateAll();
    house_.show({3, 9});
    house_.store(u"lstP", u"7");
    tick();
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("0"));
    EXPECT_EQ(house_.stored(u"lstP"), QStringLiteral("7"));
    EXPECT_EQ(state().camera(), (CameraAddress{4, 0}));
}

TEST_F(ScanTimer, GoesOnWithTheNextGroupThatIsOnBehindRowNine)
{
    activate(3, u"1");
    activate(8, u"1");
    house_.show({3, 9});
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{8, 0}));
}

TEST_F(ScanTimer, GoesFromTheLastCameraToTheFirstGroupThatIsOn)
{
    activate(2, u"1");
    activate(9, u"1");
    house_.show({9, 9});
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{2, 0}));
}

TEST_F(ScanTimer, WalksTheRowsOfAGroupThatIsOffToItsEnd)
{
    activate(2, u"1");
    house_.show({5, 8});
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{5, 9}));
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{2, 0}));
}

TEST_F(ScanTimer, WalksRowsWithoutCameraToo)
{
    activateAll();
    house_.addImages(kCamera, 2);
    house_.show(kCamera);
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{0, 1}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("0"));
}

TEST_F(ScanTimer, StandsStillWhileAFilmRunsFromTheBrowser)
{
    activateAll();
    house_.show({3, 4});
    state().filmOpened();
    house_.capture.storage.requestCheck();
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{3, 4}));
    EXPECT_TRUE(house_.capture.storage.isCheckRequested());
}

TEST_F(ScanTimer, StandsStillWhileTheStorageLampIsRed)
{
    activateAll();
    house_.show({3, 4});
    loseStorage();
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{3, 4}));
}

TEST_F(ScanTimer, ChecksTheStorageFolderFirstWhenThatIsWanted)
{
    activateAll();
    house_.show({3, 4});
    house_.pullStorage();
    house_.capture.storage.requestCheck();
    tick();
    EXPECT_EQ(house_.capture.storage.lastCheck(), StorageCheck::Missing);
    EXPECT_EQ(state().camera(), (CameraAddress{3, 4}));
}

TEST_F(ScanTimer, GoesOnAfterACheckThatFindsTheStorageFolder)
{
    activateAll();
    house_.show({3, 4});
    house_.capture.storage.requestCheck();
    tick();
    EXPECT_FALSE(house_.capture.storage.isCheckRequested());
    EXPECT_EQ(state().camera(), (CameraAddress{3, 5}));
}

TEST_F(ScanTimer, StopsTheTimersAgainWhileTheStorageBoxIsTypedInto)
{
    activateAll();
    house_.show({3, 4});
    focusStorageBox();
    browser_.setMode(Mode::Scan, true);
    house_.newLog();
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{3, 4}));
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("arret Timers")}));
    EXPECT_FALSE(browser_.scanTimer().isActive());
}

TEST_F(ScanTimer, RestartsAnOpenFilmAfterItsStep)
{
    activateAll();
    showGroup(3);
    film_.pause();
    tick();
    EXPECT_EQ(film_.calls, QStringList({QStringLiteral("begin")}));
}

TEST_F(ScanTimer, OpensNoFilm)
{
    activateAll();
    house_.show({3, 4});
    tick();
    EXPECT_EQ(state().camera(), (CameraAddress{3, 5}));
    EXPECT_EQ(film_.calls, QStringList());
}

TEST_F(ScanTimer, TakesItsStepFromTheTimer)
{
    activateAll();
    house_.show({3, 4});
    browser_.scanTimer().setInterval(0);
    browser_.setMode(Mode::Scan, true);
    QSignalSpy due(&browser_.scanTimer(), &QTimer::timeout);
    ASSERT_TRUE(due.wait(2000));
    browser_.scanTimer().stop();
    house_.finish();
    EXPECT_EQ(state().camera(), (CameraAddress{3, 5}));
}

TEST_F(ScanTimer, WalksEveryCameraOfEveryActiveGroupInADay)
{
    house_.capture.log.setOn(false);
    activate(1, u"1");
    activate(6, u"1");
    house_.show({1, 0});
    QList<int> visits(kGroups * kRows);
    for (int step = 0; step < kTicksADay; ++step) {
        house_.clock.advance(std::chrono::seconds{10});
        tick();
        visits[state().camera().group * kRows + state().camera().row] += 1;
    }
    for (int index = 0; index < visits.size(); ++index) {
        const int group = index / kRows;
        EXPECT_EQ(visits[index], group == 1 || group == 6 ? kTicksADay / 20 : 0) << index;
    }
}

TEST_F(ScanTimer, WalksEveryActiveGroupInADay)
{
    house_.capture.log.setOn(false);
    activate(0, u"1");
    activate(4, u"1");
    activate(9, u"1");
    house_.showGroup(0);
    QList<int> visits(kGroups);
    for (int step = 0; step < kTicksADay; ++step) {
        house_.clock.advance(std::chrono::seconds{10});
        tick();
        visits[state().camera().group] += 1;
    }
    EXPECT_EQ(visits, QList<int>({2880, 0, 0, 0, 2880, 0, 0, 0, 0, 2880}));
}

TEST_F(ScanTimer, HidesTheZoomImageWithTheGroupThatItShowed)
{
    activateAll();
    showGroup(3);
    house_.data.sheet.showZoom({QStringLiteral("C:\\in\\"), imageName(0)});
    tick();
    EXPECT_FALSE(house_.data.sheet.isZoomVisible());
}

} // namespace
} // namespace velmora::test
