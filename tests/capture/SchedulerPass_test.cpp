// A pass over the table: transfers overlap, effects come strictly in table order, and changes
// meanwhile are seen.
#include "CaptureTest.h"

#include <QDir>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class Pass : public CaptureTest
{
protected:
    static QString templateUrl() { return QStringLiteral("http://cam/<a:b:c>/x.jpg"); }
};

const QList<CameraAddress> kScattered = {{0, 0}, {0, 7}, {3, 2}, {9, 0}, {9, 9}};
const QStringList kScatteredNames = {QStringLiteral("0:0"), QStringLiteral("0:7"),
                                     QStringLiteral("3:2"), QStringLiteral("9:0"),
                                     QStringLiteral("9:9")};

TEST_F(Pass, StoresInTheOrderOfTheTableWhateverTheOrderOfTheReplies)
{
    std::chrono::milliseconds delay = 3s;
    for (const CameraAddress camera : kScattered) {
        add(camera, delayedReply(delay));
        delay -= 500ms;
    }
    house_.beginTick();
    clock_.advance(10s);
    EXPECT_EQ(house_.stored(), kScatteredNames);
}

TEST_F(Pass, EndsOneCameraBeforeTheNextBegins)
{
    house_.log.setOn(true);
    std::chrono::milliseconds delay = 3s;
    for (const CameraAddress camera : kScattered) {
        add(camera, delayedReply(delay));
        delay -= 500ms;
    }
    house_.beginTick();
    clock_.advance(10s);
    const QStringList lines = house_.logText().split(u'\n');
    const QString ends = QStringLiteral("Ajout de ") + kImageName;
    QStringList steps;
    QStringList expected;
    for (const QString &line : lines) {
        if (line.startsWith(QStringLiteral("Load ")) || line == ends) {
            steps.append(line);
        }
    }
    for (const QString &name : kScatteredNames) {
        expected << QStringLiteral("Load ") + name << ends;
    }
    EXPECT_EQ(steps, expected);
}

TEST_F(Pass, CostsTheLongestTransferOnly)
{
    for (const CameraAddress camera : kScattered) {
        add(camera, delayedReply(3s));
    }
    house_.beginTick();
    clock_.advance(3s - 1ms);
    EXPECT_EQ(house_.stored(), QStringList());
    clock_.advance(1ms);
    EXPECT_EQ(house_.stored(), kScatteredNames);
    EXPECT_EQ(house_.scope.running(), 0);
}

TEST_F(Pass, CostsOneTimeoutForThirtyDeadCameras)
{
    for (int i = 0; i < 30; ++i) {
        add({i / kRows, i % kRows}, delayedReply(1h));
    }
    add({3, 0});
    house_.beginTick();
    clock_.advance(5s - 1ms);
    EXPECT_EQ(house_.failed().size(), 0);
    clock_.advance(1ms);
    EXPECT_EQ(house_.failed().size(), 30);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("3:0")});
    EXPECT_EQ(house_.scope.running(), 0);
    EXPECT_EQ(house_.value(u"TimeLoad", {2, 9}), QStringLiteral("5"));
}

TEST_F(Pass, LoadsAllHundredCameras)
{
    for (int i = 0; i < kGroups * kRows; ++i) {
        add({i / kRows, i % kRows});
    }
    house_.tick();
    EXPECT_EQ(house_.stored().size(), 100);
    EXPECT_EQ(house_.stored().first(), QStringLiteral("0:0"));
    EXPECT_EQ(house_.stored().last(), QStringLiteral("9:9"));
    EXPECT_EQ(fetches(), 100);
}

TEST_F(Pass, AsksForTheLastAlternative)
{
    house_.addCamera({0, 0}, templateUrl());
    source_.answer(QStringLiteral("http://cam/c/x.jpg"), goodReply());
    house_.tick();
    EXPECT_EQ(source_.requested(), QList<QByteArray>{"http://cam/c/x.jpg"});
}

TEST_F(Pass, FilesUnderTheAddressAsTyped)
{
    house_.addCamera({0, 0}, templateUrl());
    source_.answer(QStringLiteral("http://cam/c/x.jpg"), goodReply());
    house_.tick();
    EXPECT_TRUE(house_.folder({0, 0}).contains(QStringLiteral("%3Ca%3Ab%3Ac%3E")));
    EXPECT_EQ(house_.images({0, 0}), QStringList{kImageName});
}

TEST_F(Pass, TakesAnAddressThatChangesMeanwhile)
{
    add({0, 0}, delayedReply(2s));
    add({0, 1}, delayedReply(3s));
    const QString oldFolder = house_.folder({0, 1});
    const QString newUrl = QStringLiteral("http://cam/new.jpg");
    source_.answer(newUrl, goodReply());
    house_.beginTick();
    house_.addCamera({0, 1}, newUrl);
    clock_.advance(2s);
    EXPECT_EQ(house_.stored(), (QStringList{QStringLiteral("0:0"), QStringLiteral("0:1")}));
    EXPECT_EQ(house_.images({0, 1}), QStringList{kImageName});
    EXPECT_FALSE(house_.tree.exists(oldFolder));
    EXPECT_EQ(source_.stopped(), QList<QByteArray>{cameraUrl({0, 1}).toLatin1()});
}

TEST_F(Pass, TakesAnAddressThatChangesWithinAMillisecond)
{
    add({0, 0});
    add({0, 1});
    const QString newUrl = QStringLiteral("http://cam/new.jpg");
    source_.answer(newUrl, goodReply());
    QObject::connect(&house_.store, &ImageStore::imageStored, &house_,
                     [&](CameraAddress) { house_.addCamera({0, 1}, newUrl); });
    house_.tick();
    EXPECT_EQ(house_.stored().size(), 2);
    EXPECT_EQ(house_.images({0, 1}), QStringList{kImageName});
}

TEST_F(Pass, LeavesOutACameraThatIsRemovedMeanwhile)
{
    add({0, 0}, delayedReply(2s));
    add({0, 1});
    house_.beginTick();
    house_.table.setUrl({0, 1}, u"");
    clock_.advance(2s);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_EQ(house_.failed(), QStringList());
}

TEST_F(Pass, GivesUpTheDownloadOfACameraThatIsRemovedMeanwhile)
{
    add({0, 0}, delayedReply(2s));
    add({0, 1}, delayedReply(2s));
    house_.beginTick();
    ASSERT_EQ(house_.settings.change([](SettingsDraft &draft) {
        setUrl(draft, {0, 0}, {});
        forgetRow(draft, {0, 0});
    }),
              SettingsChange::Made);
    clock_.advance(2s);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:1")});
    EXPECT_EQ(house_.failed(), QStringList());
    EXPECT_EQ(house_.page.row(0).lamp, LampColour::Red);
    for (const QStringView word : {u"TimeLoad", u"SB", u"lNew", u"LastModified", u"LocalTime"}) {
        EXPECT_EQ(house_.value(word, {0, 0}), QString()) << word.toString().toStdString();
    }
}

TEST_F(Pass, GivesUpADownloadWhoseRowHasAnotherCameraMeanwhile)
{
    for (const ScriptedReply &reply :
         {delayedReply(2s), ScriptedReply{{}, {}, {}, 2s, QStringLiteral("gone")}}) {
        add({0, 0}, reply);
        house_.beginTick();
        house_.addCamera({0, 0}, QStringLiteral("http://cam/new.jpg"));
        clock_.advance(2s);
        EXPECT_EQ(house_.stored(), QStringList());
        EXPECT_EQ(house_.failed(), QStringList());
        EXPECT_EQ(house_.page.row(0).lamp, LampColour::None);
        EXPECT_EQ(house_.value(u"SB", {0, 0}), QString());
        EXPECT_EQ(house_.value(u"TimeLoad", {0, 0}), QString());
    }
}

TEST_F(Pass, LeavesOutAGroupThatIsSwitchedOffMeanwhile)
{
    add({0, 0}, delayedReply(2s));
    add({5, 1}, delayedReply(4s));
    house_.beginTick();
    house_.table.setGroupActive(5, false);
    clock_.advance(2s);
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:0")});
    EXPECT_EQ(house_.scope.running(), 0) << "a transfer that is no longer wanted goes on";
}

TEST_F(Pass, LoadsACameraThatIsAddedMeanwhile)
{
    add({0, 0}, delayedReply(2s));
    house_.beginTick();
    add({5, 1});
    clock_.advance(2s);
    EXPECT_EQ(house_.stored(), (QStringList{QStringLiteral("0:0"), QStringLiteral("5:1")}));
}

TEST_F(Pass, FilesIntoTheStorageFolderOfItsTurn)
{
    add({0, 0});
    add({0, 1}, delayedReply(2s));
    house_.tree.makeFolder(u"drives/c/other");
    house_.beginTick();
    house_.storage.edit(QStringLiteral("C:\\other"));
    house_.storage.putInForce();
    clock_.advance(5s);
    EXPECT_EQ(house_.images({0, 0}), QStringList{kImageName});
    EXPECT_EQ(house_.images({0, 1}), QStringList());
    const QString name = house_.table.CameraFolderName({0, 1}).remove(u'\\');
    EXPECT_EQ(house_.tree.files(QStringLiteral("drives/c/other/") + name), QStringList{kImageName});
}

TEST_F(Pass, GoesOnAfterAFailure)
{
    add({0, 0}, failedReply());
    add({0, 1}, goodReply(kLastModified, 999));
    add({0, 2});
    house_.tick();
    EXPECT_EQ(house_.failed(), (QStringList{QStringLiteral("0:0"), QStringLiteral("0:1")}));
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:2")});
}

TEST_F(Pass, EndsWhenTheStorageFolderVanishes)
{
    add({0, 0}, delayedReply(1s));
    add({0, 1});
    house_.beginTick();
    ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    clock_.advance(1s);
    EXPECT_EQ(house_.failed(), QStringList{QStringLiteral("0:0")});
    EXPECT_EQ(house_.value(u"SB", {0, 1}), QString());
    house_.tick();
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Missing);
}

TEST_F(Pass, TellsItsEndOnce)
{
    add({0, 0});
    int ended = 0;
    QObject::connect(&house_.scheduler, &Scheduler::passEnded, &house_, [&ended] { ++ended; });
    house_.tick();
    EXPECT_EQ(ended, 1);
    house_.tick();
    EXPECT_EQ(ended, 2) << "a pass with nothing to load is one too";
}

TEST_F(Pass, PaintsTheRowOrangeFirst)
{
    add({0, 4}, delayedReply(1s));
    house_.beginTick();
    EXPECT_EQ(house_.page.row(4).lamp, LampColour::Orange);
    EXPECT_EQ(house_.page.currentRow(), 4);
    clock_.advance(1s);
    EXPECT_EQ(house_.page.row(4).lamp, LampColour::Green);
}

TEST_F(Pass, LeavesThePageOfAnotherGroupAlone)
{
    add({2, 4}, delayedReply(1s));
    house_.beginTick();
    EXPECT_EQ(house_.page.row(4).lamp, LampColour::None);
    EXPECT_EQ(house_.page.currentRow(), 0);
}

TEST_F(Pass, LetsOtherEventsRunBetweenCameras)
{
    for (int i = 0; i < 50; ++i) {
        add({i / kRows, i % kRows});
    }
    int storedAtFirstTurn = -1;
    QTimer::singleShot(0, &house_,
                       [&] { storedAtFirstTurn = static_cast<int>(house_.stored().size()); });
    house_.tick();
    EXPECT_EQ(house_.stored().size(), 50);
    EXPECT_GE(storedAtFirstTurn, 0);
    EXPECT_LT(storedAtFirstTurn, 50);
}

} // namespace
} // namespace velmora::test
