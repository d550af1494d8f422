// Actions in quick succession, while a full folder is still being read.
#include "browser/BrowserTest.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace velmora::test {
namespace {

const CameraAddress kFull{0, 1};
const CameraAddress kSmall{0, 2};

class Succession : public BrowserTest
{
protected:
    void SetUp() override
    {
        house_.addFullFolder(kFull);
        house_.addImages(kSmall, 3);
        state().cameraChosen(kSmall);
    }

    /// Chooses the camera whose folder takes a while, and returns before it has been read.
    void beginReading()
    {
        browser_.chooseCamera(kFull.row);
        ASSERT_GT(house_.capture.scope.running(), 0);
        ASSERT_EQ(house_.NbI(), QString());
    }

    // As if something in it had changed: it must be read again.
    void touchFolder(CameraAddress camera)
    {
        const StorageFolder &storage = house_.capture.storage;
        const QByteArray path = QFile::encodeName(storage.native(storage.cameraFolderText(camera)));
        ASSERT_EQ(::utimensat(AT_FDCWD, path.constData(), nullptr, 0), 0);
    }
};

TEST_F(Succession, ReadsAFullFolderInTheEnd)
{
    beginReading();
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
    EXPECT_EQ(house_.cells(), imageNames(kFullFolder - 10, 10));
}

TEST_F(Succession, LetsEventsRunWhileAFullFolderIsRead)
{
    bool ran = false;
    beginReading();
    QMetaObject::invokeMethod(
        &house_, [&] { ran = house_.capture.scope.running() > 0; }, Qt::QueuedConnection);
    house_.finish();
    EXPECT_TRUE(ran);
}

TEST_F(Succession, ShowsTheCameraThatWasChosenLast)
{
    beginReading();
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    EXPECT_EQ(state().camera(), kSmall);
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("2"));
}

TEST_F(Succession, NeverListsTheFolderOfACameraThatIsNotWantedAnyMore)
{
    QList<int> counts;
    QObject::connect(&house_.data.files, &QAbstractItemModel::modelReset, &house_,
                     [&] { counts.append(house_.data.files.count()); });
    beginReading();
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    EXPECT_EQ(counts, QList<int>({3}));
}

TEST_F(Succession, KeepsTheImageThatIsChosenWhileTheListIsReadAgain)
{
    house_.show(kFull);
    touchFolder(kFull);
    browser_.refresh();
    ASSERT_GT(house_.capture.scope.running(), 0);
    browser_.chooseFile(2);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 36000"));
}

TEST_F(Succession, KeepsTheSelectionWhereTheListCannotBeReadAgain)
{
    house_.show(kSmall);
    browser_.chooseFile(1);
    house_.finish();
    focusStorageBox();
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("2 / 3"));
    EXPECT_EQ(selected(), 1);
}

TEST_F(Succession, GoesToTheNewestImageWhenTheListIsReadAgainAfterTheChoice)
{
    house_.show(kFull);
    touchFolder(kFull);
    browser_.refresh();
    browser_.chooseFile(2);
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Succession, KeepsTheImageThatIsChosenWhileAReadingWaitsForItsTurn)
{
    house_.show(kFull);
    touchFolder(kFull);
    browser_.refresh();
    browser_.refresh(); // behind the first, which is given up
    browser_.chooseFile(2);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 36000"));
}

TEST_F(Succession, KeepsTheImageThatIsChosenWhileTheFolderIsReadAfterRenaming)
{
    house_.show(kFull);
    touchFolder(kFull);
    Q_EMIT house_.conformity.ended();
    ASSERT_GT(house_.capture.scope.running(), 0);
    browser_.chooseFile(2);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 36000"));
}

TEST_F(Succession, KeepsTheImageThatIsChosenWhileTheFolderIsReadAfterADeletion)
{
    house_.show(kFull);
    touchFolder(kFull);
    browser_.showDeletion(kFull);
    ASSERT_GT(house_.capture.scope.running(), 0);
    browser_.chooseFile(2);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 36000"));
}

TEST_F(Succession, ForgetsTheChoiceOnceItsReadingHasEnded)
{
    house_.show(kSmall);
    browser_.refresh();
    browser_.chooseFile(0);
    house_.finish();
    browser_.chooseCamera(kFull.row);
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
}

TEST_F(Succession, LeavesTheDisplayOfAnOlderActionUnfinished)
{
    beginReading();
    house_.newLog();
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    EXPECT_EQ(house_.newLog().count(QStringLiteral("Planche DirImage Fin")), 1);
}

TEST_F(Succession, TellsNoOneOfAnActionThatWasSuperseded)
{
    beginReading();
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    EXPECT_EQ(house_.capture.allTexts(), QStringList());
}

TEST_F(Succession, ListsTheFolderOnceForTheSameCameraChosenTwice)
{
    const QSignalSpy resets(&house_.data.files, &QAbstractItemModel::modelReset);
    beginReading();
    browser_.chooseCamera(kFull.row);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
    EXPECT_EQ(resets.size(), 1);
}

TEST_F(Succession, ListsTheFolderOnceForThreeActionsThatWantIt)
{
    const QSignalSpy resets(&house_.data.files, &QAbstractItemModel::modelReset);
    beginReading();
    browser_.refresh();
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
    EXPECT_EQ(resets.size(), 1);
}

TEST_F(Succession, ShowsTheCameraThatWasChosenAfterARow)
{
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseCameraRow(kFull.row);
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    EXPECT_EQ(state().camera(), kSmall);
    EXPECT_EQ(browser_.face().cameraRow, kSmall.row);
    EXPECT_EQ(house_.NbI(), QStringLiteral("3"));
}

TEST_F(Succession, StopsFillingAGroupAtTheStartThatIsNotWantedAnyMore)
{
    house_.addCamera({0, 9}, {imageName(40000)});
    house_.store(u"Camera", u"1");
    QStringList shown;
    QObject::connect(&house_.data.sheet, &Sheet::imageChanged, &house_,
                     [&](int cell) { shown.append(house_.cells().at(cell)); });
    browser_.load();
    ASSERT_TRUE(state().DirCamEnCours());
    browser_.chooseGroup(4);
    house_.finish();
    EXPECT_FALSE(shown.contains(imageName(40000)));
    EXPECT_EQ(house_.rows(), QStringList(kRows));
}

TEST_F(Succession, IsNotDisturbedByAStoredImageThatIsNotToBeShown)
{
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    beginReading();
    browser_.follow({5, 5});
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Succession, ShowsTheLastOfManyChoices)
{
    house_.addFullFolder({0, 5});
    for (const int row : {1, 5, 1, 5, 1, 2}) {
        browser_.chooseCamera(row);
    }
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
}

TEST_F(Succession, DeletesAFileThoughAnotherActionTakesTheDeletionsPlace)
{
    beginReading();
    const ImageFile target{
        house_.capture.storage.folderText(house_.capture.table.CameraFolderName(kSmall)),
        imageName(1)};
    browser_.kill(target);
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    EXPECT_EQ(house_.capture.images(kSmall), QStringList({imageName(0), imageName(2)}));
    EXPECT_EQ(house_.NbI(), QStringLiteral("2 / 2"));
}

TEST_F(Succession, StoresAClickOnAutoWhosePlaceAnotherActionTakes)
{
    beginReading();
    browser_.setMode(Mode::Auto, true);
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    EXPECT_TRUE(browser_.face().cAuto);
    EXPECT_EQ(house_.stored(u"Auto"), QStringLiteral("1"));
}

TEST_F(Succession, StoresTwoClicksOnCameraInOrder)
{
    beginReading();
    browser_.setMode(Mode::Camera, true);
    browser_.setMode(Mode::Camera, false);
    house_.finish();
    EXPECT_EQ(state().view(), View::Camera);
    EXPECT_EQ(house_.stored(u"Camera"), QStringLiteral("0"));
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Succession, ShowsTheGroupThatIsWantedWhileAFolderIsRead)
{
    beginReading();
    browser_.setMode(Mode::Camera, true);
    house_.finish();
    EXPECT_EQ(state().view(), View::Group);
    EXPECT_EQ(house_.rows().size(), kRows);
    EXPECT_EQ(house_.rows().value(2), imageName(2) + QStringLiteral("  "));
}

TEST_F(Succession, ShowsAnotherGroupInsteadOfTheOneBeingFilled)
{
    house_.addImages({4, 7}, 2);
    browser_.setMode(Mode::Camera, true);
    ASSERT_TRUE(state().DirCamEnCours());
    browser_.chooseGroup(4);
    house_.finish();
    QStringList expected(kRows);
    expected[7] = imageName(1) + QStringLiteral("  ");
    EXPECT_EQ(house_.rows(), expected);
    EXPECT_EQ(house_.cells().value(1), QString());
    EXPECT_FALSE(state().DirCamEnCours());
}

TEST_F(Succession, FillsTheRowsOnceWhenTheGroupIsWantedTwice)
{
    browser_.setMode(Mode::Camera, true);
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(house_.rows().size(), kRows);
}

TEST_F(Succession, GoesOnFromTheDisplayThatIsBeingBuilt)
{
    state().allowReading();
    browser_.setMode(Mode::Camera, true);
    browser_.chooseCameraRow(kSmall.row);
    house_.finish();
    EXPECT_EQ(house_.rows().size(), kRows);
    EXPECT_EQ(browser_.face().cameraRow, kSmall.row);
    EXPECT_EQ(house_.NbI(), QStringLiteral("3"));
}

TEST_F(Succession, FinishesAnActionThatGoesOnFromTheDisplayBeforeARebuild)
{
    state().allowReading();
    house_.showGroup(0);
    browser_.chooseCameraRow(kFull.row);
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(house_.data.files.count(), kFullFolder);
}

TEST_F(Succession, SelectsInTheOldListWhileTheNewOneIsRead)
{
    house_.show(kSmall);
    beginReading();
    browser_.chooseFile(0);
    EXPECT_EQ(house_.NbI(), QStringLiteral("1 / 3"));
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Succession, GoesOnAfterAnActionThatWasSuperseded)
{
    beginReading();
    browser_.chooseCamera(kSmall.row);
    house_.finish();
    browser_.chooseCamera(kFull.row);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Succession, FollowsTheCaptureWhileItsCameraIsBeingRead)
{
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    beginReading();
    browser_.follow(kFull);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Succession, ReportsAnErrorOfAnActionAndGoesOn)
{
    QObject::connect(&browser_, &ImageBrowser::filesWanted, &house_,
                     [] { throw std::runtime_error("broken"); });
    house_.show(kSmall);
    browser_.clickCell(0);
    house_.finish();
    EXPECT_EQ(house_.capture.allTexts(), QStringList({QStringLiteral("broken")}));
    browser_.refresh();
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
}

TEST_F(Succession, ShowsTheImagesOfAnAddressThatIsGivenBackWhileAnotherIsRead)
{
    house_.show(kSmall);
    ASSERT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
    const QString before = house_.capture.table.url(kSmall);
    house_.capture.addCamera(kSmall, house_.capture.table.url(kFull));
    browser_.followAddress(kSmall);
    ASSERT_GT(house_.capture.scope.running(), 0);
    house_.capture.addCamera(kSmall, before);
    browser_.followAddress(kSmall);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("3 / 3"));
    EXPECT_EQ(house_.cells().value(2), imageName(2));
}

TEST_F(Succession, ShowsImagesThatAreFollowedThoughTheyComeFasterThanTheirFolderIsRead)
{
    constexpr int kImages = 100;
    house_.show(kFull);
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    int shown = 0;
    QObject::connect(&house_.data.files, &QAbstractItemModel::modelReset, &house_,
                     [&] { ++shown; });
    for (int image = 0; image < kImages; ++image) {
        touchFolder(kFull);
        browser_.follow(kFull);
        QCoreApplication::processEvents();
    }
    EXPECT_GT(shown, 1);
    EXPECT_LT(house_.capture.scope.running(), kImages) << "each would be read for";
    browser_.chooseFile(2);
    browser_.follow(kFull);
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("36000 / 36000"));
}

TEST_F(Succession, SelectsTheLastOfTheCamerasThatAreFollowedInAGroup)
{
    house_.showGroup(0);
    browser_.setMode(Mode::Auto, true);
    house_.finish();
    touchFolder(kFull);
    for (const int row : {1, 2, 1, 2}) {
        browser_.follow({0, row});
    }
    house_.finish();
    EXPECT_EQ(browser_.face().cameraRow, 2);
    EXPECT_EQ(house_.rows().size(), kRows);
}

} // namespace
} // namespace velmora::test
