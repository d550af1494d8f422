// The capture while the storage box is being edited, and before and after.
#include "CaptureTest.h"

#include <QCoreApplication>
#include <QDir>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class Edit : public CaptureTest
{
protected:
    void removeStorage() const
    {
        ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    }

    void putInForce(const QString &text)
    {
        house_.storage.edit(text);
        house_.storage.putInForce();
    }

    [[nodiscard]] QString step() const { return house_.status.text(Caption::Step); }

    [[nodiscard]] QString standstill() const { return house_.status.text(Caption::Standstill); }

    /// A pass in the middle of the second of three cameras.
    void beginPass()
    {
        add({0, 0});
        add({0, 1}, delayedReply(2s));
        add({0, 2});
        house_.beginTick();
    }
};

TEST_F(Edit, HoldsAPassAndGivesUpWhatIsBeingDownloaded)
{
    beginPass();
    house_.storage.beginEdit();
    clock_.advance(1h);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_EQ(source_.underWay(), 0);
    EXPECT_EQ(house_.failed(), QStringList());
    EXPECT_FALSE(house_.timer.isActive());
}

// The dialog for the folder leaves the box alone, so nothing is edited meanwhile.
TEST_F(Edit, LoadsTheCameraInHandAgainIntoAFolderThatIsChosenDuringAPass)
{
    beginPass();
    house_.tree.makeFolder(u"drives/c/other");
    ASSERT_TRUE(house_.storage.choose(house_.tree.path(u"drives/c/other")));
    clock_.advance(0ms);
    EXPECT_EQ(source_.requested().size(), 5); // the last two of the pass are asked again
    clock_.advance(2s);
    EXPECT_EQ(house_.stored(),
              (QStringList{QStringLiteral("0:0"), QStringLiteral("0:1"), QStringLiteral("0:2")}));
    EXPECT_EQ(house_.page.row(1).lamp, LampColour::Green);
    EXPECT_EQ(house_.tree.folders(u"drives/c/other").size(), 3); // the work folder is one
}

TEST_F(Edit, TakesTheOrangeOfTheCameraInHandAway)
{
    beginPass();
    ASSERT_EQ(house_.page.row(1).lamp, LampColour::Orange);
    const LampColour before = house_.table.row({0, 1}).lamp;
    house_.storage.beginEdit();
    clock_.advance(0ms);
    EXPECT_EQ(house_.page.row(1).lamp, before);
}

TEST_F(Edit, LeavesARowRedWhoseCameraWasTakenAwayMeanwhile)
{
    beginPass();
    house_.table.setUrl({0, 1}, u"");
    house_.engine.adoptSettings();
    house_.storage.beginEdit();
    clock_.advance(0ms);
    EXPECT_EQ(house_.page.row(1).lamp, LampColour::Red);
}

TEST_F(Edit, LetsThePassGoOnAfterwardsWithTheCameraThatWasInHand)
{
    beginPass();
    house_.storage.beginEdit();
    clock_.advance(1min);
    house_.storage.putInForce();
    clock_.advance(2s);
    EXPECT_EQ(house_.stored(),
              (QStringList{QStringLiteral("0:0"), QStringLiteral("0:1"), QStringLiteral("0:2")}));
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Edit, ReadsAheadAgainAfterwards)
{
    for (int row = 0; row < kRows; ++row) {
        add({0, row}, delayedReply(2s));
    }
    house_.beginTick();
    house_.storage.beginEdit();
    clock_.advance(1min);
    house_.storage.putInForce();
    clock_.advance(2s);
    EXPECT_EQ(house_.stored().size(), 10);
}

TEST_F(Edit, StoresNothingOfAPassInAFolderThatIsOnlyTyped)
{
    beginPass();
    house_.tree.makeFolder(u"drives/c/other");
    house_.storage.edit(QStringLiteral("C:\\other"));
    clock_.advance(1min);
    EXPECT_EQ(house_.tree.folders(u"drives/c/other"), QStringList());
    house_.storage.edit(QStringLiteral("C:\\in"));
    house_.storage.putInForce();
    clock_.advance(1min);
    EXPECT_EQ(house_.tree.folders(u"drives/c/other"), QStringList());
    EXPECT_EQ(house_.stored().size(), 3);
}

TEST_F(Edit, DropsAPictureThatArrivedInThatVeryTurn)
{
    add({0, 0}, delayedReply(1s));
    house_.beginLoad({0, 0});
    house_.storage.beginEdit();
    house_.storage.putInForce();
    clock_.advance(2s);
    EXPECT_EQ(house_.stored(), QStringList());
    EXPECT_EQ(house_.failed(), QStringList());
}

TEST_F(Edit, ShowsPauseWhileTheTimersAreStopped)
{
    house_.tick();
    ASSERT_EQ(step(), QStringLiteral("Wait"));
    house_.storage.beginEdit();
    EXPECT_EQ(step(), QStringLiteral("Pause"));
    house_.storage.putInForce();
    EXPECT_EQ(step(), QStringLiteral("Wait"));
    removeStorage();
    house_.storage.recheck();
    EXPECT_EQ(step(), QStringLiteral("Pause"));
}

TEST_F(Edit, ShowsPauseBehindThePassThatItHolds)
{
    beginPass();
    ASSERT_EQ(step(), QStringLiteral("Load 0:1"));
    house_.storage.beginEdit();
    clock_.advance(1s);
    EXPECT_EQ(step(), QStringLiteral("Pause"));
    house_.storage.putInForce();
    clock_.advance(10ms);
    EXPECT_EQ(step(), QStringLiteral("Load 0:1"));
}

TEST_F(Edit, SaysThatTheCaptureWaits)
{
    EXPECT_EQ(standstill(), QString());
    house_.storage.edit(QStringLiteral("C:\\ot"));
    EXPECT_TRUE(
        standstill().startsWith(QStringLiteral("The capture waits for the storage folder")));
    house_.storage.edit(QStringLiteral("C:\\in"));
    house_.storage.putInForce();
    EXPECT_EQ(standstill(), QString());
}

TEST_F(Edit, SaysWhyTheCaptureHasStopped)
{
    removeStorage();
    house_.storage.recheck();
    EXPECT_EQ(standstill(), QStringLiteral("The capture has stopped: the storage folder C:\\in\\ "
                                           "is not there"));
}

// Anything that turns the lamp green.
TEST_F(Edit, LetsTheTimerRunAgainForAFolderThatIsChosen)
{
    putInForce(QStringLiteral("C:\\none"));
    house_.storage.beginEdit();
    EXPECT_TRUE(house_.storage.choose(house_.tree.path(u"drives/c/in")));
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Edit, LetsTheTimerRunAgainForAFolderThatIsMade)
{
    putInForce(QStringLiteral("C:\\none"));
    house_.storage.beginEdit();
    house_.storage.MakeDir_Click();
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Edit, LetsTheTimerRunAgainForAFolderThatAppears)
{
    putInForce(QStringLiteral("C:\\none"));
    EXPECT_FALSE(house_.timer.isActive());
    house_.tree.makeFolder(u"drives/c/none");
    house_.storage.recheck();
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Edit, LetsTheTimerRunAgainForATicksOwnCheck)
{
    putInForce(QStringLiteral("C:\\none"));
    house_.tree.makeFolder(u"drives/c/none");
    house_.storage.requestCheck();
    house_.tick();
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(Edit, KeepsTheTimerStoppedWhenTheTypedFolderIsThere)
{
    house_.storage.edit(QStringLiteral("C:\\i"));
    house_.storage.edit(QStringLiteral("C:\\in"));
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Found);
    EXPECT_FALSE(house_.timer.isActive());
}

TEST_F(Edit, EndsWithTheProgramWithoutItsOtherCameras)
{
    beginPass();
    house_.storage.beginEdit();
    house_.scope.launch(house_.scheduler.lastTick());
    clock_.advance(1s);
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
}

/// The transfers of a pass over four groups are being started, which takes several turns.
class Starting : public Edit
{
protected:
    static constexpr int kAll = 4 * kRows;

    Starting()
    {
        for (int index = 0; index < kAll; ++index) {
            add(cameraAt(index), delayedReply(2s));
        }
        house_.scope.launch(house_.scheduler.Timer_Timer());
        for (int turn = 0; turn < kMostTurns && fetches() == 0; ++turn) {
            QCoreApplication::processEvents();
        }
    }

    static constexpr int kMostTurns = 100;
};

TEST_F(Starting, LetsTheFirstRequestsLeaveMeanwhile)
{
    EXPECT_GT(fetches(), 0);
    EXPECT_LT(fetches(), kAll);
    clock_.advance(0ms);
    EXPECT_EQ(fetches(), kAll);
    clock_.advance(2s);
    EXPECT_EQ(house_.stored().size(), kAll);
}

TEST_F(Starting, WaitsWhileTheStorageFolderIsTyped)
{
    house_.storage.beginEdit();
    const qsizetype before = fetches();
    clock_.advance(1min);
    EXPECT_EQ(fetches(), before);
    EXPECT_EQ(source_.underWay(), 0);
    house_.storage.putInForce();
    clock_.advance(0ms);
    EXPECT_EQ(source_.underWay(), kAll) << "the first ones are started again";
    clock_.advance(2s);
    EXPECT_EQ(house_.stored().size(), kAll);
}

TEST_F(Starting, BeginsFromTheFirstCameraForAnotherStorageFolder)
{
    house_.tree.makeFolder(u"drives/c/other");
    ASSERT_TRUE(house_.storage.choose(house_.tree.path(u"drives/c/other")));
    clock_.advance(0ms);
    EXPECT_EQ(source_.underWay(), kAll);
    clock_.advance(2s);
    EXPECT_EQ(house_.tree.folders(u"drives/c/other").size(), kAll + 1); // the work folder is one
    EXPECT_EQ(house_.tree.folders(u"drives/c/in"), QStringList());
}

TEST_F(Starting, GoesOnAfterASuspension)
{
    const Suspension held = house_.scheduler.suspend();
    clock_.advance(1min);
    EXPECT_LT(fetches(), kAll);
    house_.scheduler.resume(held);
    clock_.advance(0ms);
    EXPECT_EQ(fetches(), kAll);
    clock_.advance(2s);
    EXPECT_EQ(house_.stored().size(), kAll);
}

TEST_F(Starting, EndsWithTheCapture)
{
    const qsizetype before = fetches();
    house_.scheduler.giveUp();
    clock_.advance(1min);
    EXPECT_EQ(fetches(), before);
    EXPECT_EQ(source_.underWay(), 0);
    EXPECT_EQ(house_.scope.running(), 0);
}

TEST_F(Starting, LeavesOutACameraThatIsRemovedMeanwhile)
{
    house_.table.setUrl({3, 9}, u"");
    clock_.advance(2s);
    EXPECT_EQ(fetches(), kAll - 1);
    EXPECT_EQ(house_.stored().size(), kAll - 1);
}

TEST_F(Starting, EndsWhenTheStorageFolderIsNotThere)
{
    removeStorage();
    house_.storage.testSA();
    ASSERT_EQ(house_.storage.lastCheck(), StorageCheck::Missing);
    clock_.advance(1min);
    EXPECT_EQ(house_.stored(), QStringList());
    EXPECT_EQ(house_.scope.running(), 0);
}

using FirstPass = Edit;

TEST_F(FirstPass, IsStillTheFirstWhenTheStorageFolderVanishedInIt)
{
    beginPass();
    removeStorage();
    clock_.advance(2s);
    ASSERT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    house_.beginTick(); // the check that it has requested
    house_.tree.makeFolder(u"drives/c/in");
    house_.putImage({0, 0}, kImageName);
    house_.putImage({0, 1},
                    QStringLiteral("20050307_1405090714.jpg")); // due by the first pass alone
    house_.putImage({0, 2}, QStringLiteral("20050307_1405090714.jpg"));
    house_.storage.recheck();
    const qsizetype before = fetches();
    house_.beginTick();
    clock_.advance(5s);
    EXPECT_EQ(house_.stored(),
              (QStringList{QStringLiteral("0:0"), QStringLiteral("0:1"), QStringLiteral("0:2")}));
    EXPECT_EQ(fetches() - before, 2) << "the camera that it reached is loaded no second time";
}

TEST_F(FirstPass, ComesLaterWhileTheCaptureIsHeldAtTheStart)
{
    add({0, 0});
    const Suspension held = house_.scheduler.suspend();
    house_.scope.launch(house_.scheduler.firstTick());
    clock_.advance(1min);
    EXPECT_EQ(fetches(), 0);
    house_.scheduler.resume(held);
    clock_.advance(10ms);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_EQ(house_.scheduler.ticksLeft(), 4);
}

} // namespace
} // namespace velmora::test
