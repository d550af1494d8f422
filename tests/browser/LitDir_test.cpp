// Listing the selected camera's folder: when it may be read, when it is made, and what is reported
// about it.
#include "browser/BrowserTest.h"

#include <QDir>

namespace velmora::test {
namespace {

class LitDir : public BrowserTest
{
protected:
    void read()
    {
        state().allowReading();
        run(steps_.lists.LitDir());
    }

    /// Something other than a folder is where a camera's folder should be.
    void blockFolder(CameraAddress camera)
    {
        house_.capture.addCamera(camera, cameraUrl(camera));
        house_.capture.tree.write(house_.capture.folder(camera), "in the way");
    }

    [[nodiscard]] bool isThere(CameraAddress camera) const
    {
        return house_.capture.tree.exists(house_.capture.folder(camera));
    }
};

TEST_F(LitDir, ListsTheImagesOfTheSelectedCameraInOrderOfTheirNames)
{
    house_.addCamera({2, 7}, {imageName(2), imageName(0), imageName(1)});
    state().cameraChosen({2, 7});
    read();
    ASSERT_EQ(house_.data.files.count(), 3);
    EXPECT_EQ(house_.data.files.file(0).name, imageName(0));
    EXPECT_EQ(house_.data.files.file(2).name, imageName(2));
}

TEST_F(LitDir, JoinsStorageFolderCameraFolderAndNameToAPath)
{
    house_.addImages(kCamera, 1);
    read();
    EXPECT_EQ(house_.data.files.file(0).path(), QStringLiteral("C:\\in\\") +
                                                    house_.capture.table.CameraFolderName(kCamera) +
                                                    imageName(0));
}

TEST_F(LitDir, ListsNamesThatBeginWithTwentyAlone)
{
    house_.addCamera(kCamera, {QStringLiteral("19991231_2359590000.jpg"),
                               QStringLiteral("21000101_0000000000.jpg"),
                               QStringLiteral("holiday.jpg"), QStringLiteral("2.jpg"),
                               QStringLiteral("20"), QStringLiteral("20061005_1jpg")});
    read();
    ASSERT_EQ(house_.data.files.count(), 2);
    EXPECT_EQ(house_.data.files.file(0).name, QStringLiteral("20"));
    EXPECT_EQ(house_.data.files.file(1).name, QStringLiteral("20061005_1jpg"));
}

TEST_F(LitDir, TellsTheNumberOfFiles)
{
    house_.addImages(kCamera, 12);
    read();
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("12"));
}

TEST_F(LitDir, TellsZeroForAnEmptyFolderAndTurnsTheFilmButtonOff)
{
    house_.addImages(kCamera, 1);
    read();
    house_.addCamera({0, 1});
    state().cameraChosen({0, 1});
    read();
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("0"));
    EXPECT_FALSE(steps_.selection.isFilmEnabled());
}

TEST_F(LitDir, TurnsTheFilmButtonOnForOneFile)
{
    house_.addImages(kCamera, 1);
    EXPECT_FALSE(steps_.selection.isFilmEnabled());
    read();
    EXPECT_TRUE(steps_.selection.isFilmEnabled());
}

TEST_F(LitDir, SelectsNoFile)
{
    house_.addImages(kCamera, 3);
    read();
    EXPECT_EQ(selected(), -1);
}

TEST_F(LitDir, ReadsTheFolderAgainEachTime)
{
    house_.addImages(kCamera, 1);
    read();
    house_.put(kCamera, imageName(5));
    read();
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("2"));
}

TEST_F(LitDir, DoesNothingUntilFoldersMayBeRead)
{
    house_.addImages(kCamera, 3);
    house_.capture.storage.requestCheck();
    run(steps_.lists.LitDir());
    EXPECT_EQ(house_.data.files.count(), 0);
    EXPECT_EQ(steps_.selection.NbI(), QString());
    EXPECT_TRUE(house_.capture.storage.isCheckRequested());
}

TEST_F(LitDir, IsAllowedToReadFromTheFirstDisplayOn)
{
    EXPECT_FALSE(state().LectureOK());
    run(steps_.lists.DirImage());
    EXPECT_TRUE(state().LectureOK());
}

TEST_F(LitDir, DoesNothingWhileTheStorageLampIsRed)
{
    house_.addImages(kCamera, 3);
    loseStorage();
    house_.plugStorage();
    read();
    EXPECT_EQ(house_.data.files.count(), 0);
    EXPECT_EQ(steps_.selection.NbI(), QString());
}

TEST_F(LitDir, DoesNothingBeforeTheFirstStorageCheck)
{
    Rooms unchecked(FirstCheck::Outstanding);
    unchecked.house.addImages(kCamera, 3);
    unchecked.house.data.state.allowReading();
    Steps steps(unchecked.house);
    unchecked.house.capture.scope.launch(steps.lists.LitDir());
    EXPECT_EQ(unchecked.house.data.files.count(), 0);
}

TEST_F(LitDir, ChecksTheStorageFolderFirstWhenThatIsWanted)
{
    house_.addImages(kCamera, 3);
    house_.capture.storage.requestCheck();
    read();
    EXPECT_FALSE(house_.capture.storage.isCheckRequested());
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("3"));
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("Interface TestSA")}));
}

TEST_F(LitDir, ReadsNothingWhenThatCheckFindsTheStorageFolderGone)
{
    house_.addImages(kCamera, 3);
    house_.pullStorage();
    house_.capture.storage.requestCheck();
    read();
    EXPECT_EQ(house_.capture.storage.lastCheck(), StorageCheck::Missing);
    EXPECT_EQ(steps_.selection.NbI(), QString());
}

TEST_F(LitDir, ReadsAgainWhenThatCheckFindsTheStorageFolderBack)
{
    house_.addImages(kCamera, 3);
    loseStorage();
    house_.plugStorage();
    house_.capture.storage.requestCheck();
    read();
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("3"));
}

TEST_F(LitDir, ChecksNothingUnlessAsked)
{
    house_.addImages(kCamera, 1);
    house_.newLog();
    read();
    EXPECT_EQ(house_.newLog(), QStringList());
}

TEST_F(LitDir, StopsTheTimersAgainWhileTheStorageBoxIsTypedInto)
{
    house_.addImages(kCamera, 3);
    focusStorageBox();
    house_.capture.timer.start();
    house_.newLog();
    read();
    EXPECT_FALSE(house_.capture.timer.isActive());
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("arret Timers")}));
    EXPECT_EQ(house_.data.files.count(), 0);
}

TEST_F(LitDir, StopsTheTimersAgainEvenWhileTheLampIsRed)
{
    loseStorage();
    focusStorageBox();
    house_.newLog();
    read();
    EXPECT_EQ(house_.newLog(), QStringList({QStringLiteral("arret Timers")}));
}

TEST_F(LitDir, MakesAMissingCameraFolderTogetherWithTheOthers)
{
    house_.capture.addCamera({0, 0}, cameraUrl({0, 0}));
    house_.capture.addCamera({4, 5}, cameraUrl({4, 5}));
    read();
    EXPECT_TRUE(isThere({0, 0}));
    EXPECT_TRUE(isThere({4, 5}));
    EXPECT_EQ(house_.newLog().value(0), QStringLiteral("Interface MkDir"));
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("0"));
}

TEST_F(LitDir, BringsTheFixedCamerasNearerWithAFolderThatIsMade)
{
    house_.capture.addCamera({0, 0}, cameraUrl({0, 0}));
    house_.capture.scheduler.setTickCounter(3);
    read();
    EXPECT_EQ(house_.capture.scheduler.ticksLeft(), 5);
}

TEST_F(LitDir, MakesNothingWhenTheCameraFolderIsThere)
{
    house_.addCamera({0, 0});
    house_.capture.addCamera({4, 5}, cameraUrl({4, 5}));
    read();
    EXPECT_FALSE(isThere({4, 5}));
}

TEST_F(LitDir, NeverMakesTheStorageFolderItself)
{
    house_.addImages(kCamera, 1);
    house_.pullStorage();
    read();
    EXPECT_FALSE(house_.capture.tree.exists(u"drives/c/in"));
    EXPECT_EQ(house_.capture.storage.lastCheck(), StorageCheck::Missing);
    EXPECT_EQ(house_.data.files.count(), 0);
}

TEST_F(LitDir, TellsOnceOfACameraFolderThatCannotBeMade)
{
    blockFolder(kCamera);
    read();
    const QStringList told = house_.capture.allTexts();
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].contains(QStringLiteral("camera 0:0"))) << told[0].toStdString();
    read();
    read();
    EXPECT_EQ(house_.capture.allTexts(), told);
}

TEST_F(LitDir, MakesACameraFolderAgainThatWentAwayAgain)
{
    house_.capture.addCamera(kCamera, cameraUrl(kCamera));
    read();
    QDir().rmdir(house_.capture.tree.path(house_.capture.folder(kCamera)));
    read();
    EXPECT_TRUE(isThere(kCamera));
}

TEST_F(LitDir, LeavesTheStorageFolderThatAnotherProgramHasStoredWhenItMakesACameraFolder)
{
    house_.capture.tree.makeFolder(u"drives/c/other");
    house_.capture.addCamera(kCamera, cameraUrl(kCamera));
    house_.store(u"StRep", u"C:\\other\\");
    read();
    EXPECT_TRUE(isThere(kCamera));
    EXPECT_EQ(house_.stored(u"StRep"), QStringLiteral("C:\\other\\"));
    house_.capture.storage.adoptStored();
    EXPECT_EQ(house_.capture.storage.inForce(), QStringLiteral("C:\\other\\"));
}

TEST_F(LitDir, ListsTheStorageFolderForARowWithoutAddress)
{
    house_.capture.tree.write(u"drives/c/in/20060307_0000000714.jpg", "x");
    state().cameraChosen({5, 5});
    read();
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("1"));
    EXPECT_EQ(house_.data.files.file(0).path(), QStringLiteral("C:\\in\\20060307_0000000714.jpg"));
}

TEST_F(LitDir, MakesAFolderForAsMuchOfALongAddressAsTheSettingsGiveBack)
{
    house_.capture.addCamera(kCamera, QString(300, u'a'));
    read();
    EXPECT_EQ(house_.capture.tree.folders(u"drives/c/in"), QStringList({QString(254, u'a')}));
    EXPECT_EQ(house_.capture.allTexts(), QStringList());
}

TEST_F(LitDir, MakesAFolderForAnAddressWhoseFolderNameIsCut)
{
    house_.capture.addCamera(kCamera, QString(100, u'1')); // three characters each
    read();
    EXPECT_EQ(house_.capture.tree.folders(u"drives/c/in"),
              QStringList({QStringLiteral("%31").repeated(85)}));
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("0"));
}

TEST_F(LitDir, IgnoresFoldersWhoseNamesLookLikeImages)
{
    house_.addImages(kCamera, 1);
    house_.capture.tree.makeFolder(house_.capture.folder(kCamera) +
                                   QStringLiteral("/20060307_9.jpg"));
    read();
    EXPECT_EQ(steps_.selection.NbI(), QStringLiteral("1"));
}

} // namespace
} // namespace velmora::test
