// The file of the live picture, the folders that it needs, and what happens to them when something
// fails.
#include "LiveViewTest.h"
#include "base/WorkFile.h"
#include "support/FileSizeLimit.h"

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

using LiveFile = LiveViewTest;

const QString kNoSpace =
    QStringLiteral("The live picture of camera 0:7 cannot be stored: File too large");

TEST_F(LiveFile, HoldsTheBytesThatCame)
{
    const QByteArray bytes("\x00\r\n\xFF picture", 12);
    answer(cameraUrl(kShown), bytes);
    show();
    EXPECT_EQ(target(), bytes);
}

TEST_F(LiveFile, IsTheOnlyOneInItsFolder)
{
    show();
    show();
    EXPECT_EQ(house_.tree.files(u"drives/c/in/tmp"), QStringList{QStringLiteral("Target.jpg")});
}

TEST_F(LiveFile, ReplacesTheOneBefore)
{
    putTarget(QByteArray(5000, 'x'));
    answer(cameraUrl(kShown), "new");
    show();
    EXPECT_EQ(target(), "new");
}

TEST_F(LiveFile, ReplacesALinkAndNotWhatItLeadsTo)
{
    house_.tree.write(u"precious", "mine");
    house_.tree.makeFolder(u"drives/c/in/tmp");
    ASSERT_EQ(::symlink(QFile::encodeName(house_.tree.path(u"precious")).constData(),
                        QFile::encodeName(house_.tree.path(kTarget)).constData()),
              0);
    answer(cameraUrl(kShown), "new");
    show();
    EXPECT_EQ(house_.tree.read(u"precious"), "mine");
    EXPECT_EQ(target(), "new");
}

TEST_F(LiveFile, HoldsWhatIsNoPictureToo)
{
    answer(cameraUrl(kShown), "<html>");
    show();
    EXPECT_EQ(target(), "<html>");
    EXPECT_EQ(live_.livePicture(), house_.tree.path(kTarget));
}

TEST_F(LiveFile, MayBeEmpty)
{
    answer(cameraUrl(kShown), "");
    show();
    EXPECT_EQ(target(), "");
}

TEST_F(LiveFile, IsDeletedWhenTheFetchFails)
{
    putTarget("old");
    source_.answer(cameraUrl(kShown), failedReply());
    show();
    EXPECT_EQ(target(), "-");
    EXPECT_EQ(live_.livePicture(), QString());
    EXPECT_EQ(events_.count(QStringLiteral("web")), 2); // at the start and at the end
    EXPECT_EQ(events_.count(QStringLiteral("web Target.jpg")), 0);
    EXPECT_EQ(live_.captions().web, kClick);
}

TEST_F(LiveFile, IsLeftAloneByAFetchThatIsGivenUp)
{
    show();
    source_.answer(cameraUrl(kShown), delayedReply(std::chrono::seconds{3}));
    begin(kShown, cameraUrl(kShown));
    live_.clear();
    clock_.advance(std::chrono::seconds{5});
    EXPECT_EQ(target(), goodReply().body);
}

TEST_F(LiveFile, IsNotClearedAwayWithStrayFiles)
{
    show();
    clearWorkFiles(house_.tree.path(u"drives/c/in/tmp"));
    EXPECT_EQ(target(), goodReply().body);
}

TEST_F(LiveFile, SaysWhyItCannotBeWritten)
{
    putTarget("old");
    const FileSizeLimit full(100);
    show();
    EXPECT_EQ(house_.status.text(Caption::Trouble), kNoSpace);
    EXPECT_EQ(live_.livePicture(), QString());
    EXPECT_EQ(house_.tree.files(u"drives/c/in/tmp"), QStringList());
    EXPECT_EQ(live_.captions().web, kClick);
}

TEST_F(LiveFile, SaysThatItsPlaceIsTaken)
{
    house_.tree.makeFolder(kTarget);
    show();
    EXPECT_EQ(house_.status.text(Caption::Trouble),
              QStringLiteral("The live picture of camera 0:7 cannot be stored: Target.jpg in the "
                             "folder tmp cannot be replaced"));
    EXPECT_EQ(live_.livePicture(), QString());
}

TEST_F(LiveFile, TakesItsTroubleBackOnceItIsWritten)
{
    {
        const FileSizeLimit full(100);
        show();
    }
    show();
    EXPECT_EQ(house_.status.text(Caption::Trouble), QString());
}

TEST_F(LiveFile, LeavesTheTroubleOfOthersOnShow)
{
    house_.status.set(Caption::Trouble, QStringLiteral("the disk smokes"));
    show();
    EXPECT_EQ(house_.status.text(Caption::Trouble), QStringLiteral("the disk smokes"));
}

TEST_F(LiveFile, IsNotWrittenWhileTheStorageBoxIsEdited)
{
    source_.answer(cameraUrl(kShown), delayedReply(1s));
    begin(kShown, cameraUrl(kShown));
    house_.storage.beginEdit();
    clock_.advance(1min);
    EXPECT_EQ(target(), "-");
    EXPECT_EQ(source_.underWay(), 0);
    house_.storage.putInForce();
    clock_.advance(2s);
    EXPECT_EQ(target(), goodReply().body);
}

TEST_F(LiveFile, WaitsForTheStorageFolderBeforeItMakesAny)
{
    house_.storage.edit(QStringLiteral("C:\\new"));
    show();
    EXPECT_FALSE(house_.tree.exists(u"drives/c/new"));
    EXPECT_EQ(fetches(), 0);
    house_.storage.putInForce();
    clock_.advance(1s);
    EXPECT_TRUE(house_.tree.exists(u"drives/c/new/tmp/Target.jpg"));
}

using LiveFolder = LiveViewTest;

// Names the folder, by typing and leaving the box or in another way.
void name(StorageFolder &storage, const QString &folder)
{
    storage.edit(folder);
    storage.putInForce();
}

TEST_F(LiveFolder, ThatTheUserHasJustNamedIsMadeBeforeAnythingElse)
{
    name(house_.storage, QStringLiteral("C:\\new"));
    live_.Affiche(kShown, cameraUrl(kShown));
    EXPECT_TRUE(house_.tree.exists(u"drives/c/new"));
    EXPECT_FALSE(house_.tree.exists(u"drives/c/new/tmp"));
}

TEST_F(LiveFolder, ThatIsMadeTurnsTheLampGreenAndIsReported)
{
    QStringList told;
    QObject::connect(&house_.storage, &StorageFolder::told, &house_.storage,
                     [&told](const QString &text) { told.append(text); });
    name(house_.storage, QStringLiteral("C:\\new"));
    show();
    EXPECT_TRUE(house_.tree.exists(u"drives/c/new/tmp/Target.jpg"));
    EXPECT_EQ(house_.storage.lastCheck(), StorageCheck::Found);
    EXPECT_TRUE(house_.timer.isActive());
    EXPECT_EQ(told, QStringList{QStringLiteral("The storage folder C:\\new\\ was made")});
}

TEST_F(LiveFolder, ThatWentAwayIsNotMadeAndIsReported)
{
    for (const bool isSeen : {false, true}) {
        removeStorage();
        if (isSeen) {
            house_.storage.testSA();
        }
        show();
        EXPECT_FALSE(house_.tree.exists(u"drives/c/in"));
        EXPECT_TRUE(house_.status.text(Caption::Trouble)
                        .contains(QStringLiteral("C:\\in\\ is not there; its disk may be away")));
        EXPECT_EQ(fetches(), isSeen ? 2 : 1);
    }
}

TEST_F(LiveFolder, ThatCannotBeMadeIsNoError)
{
    name(house_.storage, QStringLiteral("C:\\file"));
    house_.tree.write(u"drives/c/file", "a file");
    show();
    EXPECT_EQ(house_.tree.read(u"drives/c/file"), "a file");
    EXPECT_EQ(house_.status.text(Caption::Trouble),
              QStringLiteral("The live picture of camera 0:7 cannot be stored: Not a directory"));
    EXPECT_EQ(live_.captions().web, kClick);
}

TEST_F(LiveFolder, OfADriveThatDoesNotExistGetsNoFile)
{
    house_.storage.edit(QStringLiteral("Q:\\in"));
    house_.storage.putInForce();
    show();
    EXPECT_EQ(
        house_.status.text(Caption::Trouble),
        QStringLiteral("The live picture of camera 0:7 cannot be stored: there is no such drive"));
    EXPECT_EQ(storedPicture_, QString());
}

} // namespace
} // namespace velmora::test
