// What a user does in the browser while a large folder is being read: it concerns what is on show,
// not what will be there in a moment.
#include "SelectionTest.h"
#include "ui/FilmKeep.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

namespace velmora::test {
namespace {

constexpr int kLarge = 36000;

// Files without contents, in one folder for all tests.
const TempTree &largeFolder()
{
    static const TempTree folder;
    static const bool isFilled = [] {
        for (int number = 0; number < kLarge; ++number) {
            folder.write(storedName(number), QByteArray());
        }
        return true;
    }();
    Q_UNUSED(isFilled);
    return folder;
}

class PlancheReading : public SelectionTest
{
protected:
    PlancheReading() { QGuiApplication::clipboard()->clear(); }

    // A camera whose folder takes several turns of the event loop to read.
    void addLarge(CameraAddress camera)
    {
        house_.house.addCamera(camera, cameraUrl(camera));
        ASSERT_TRUE(
            QFile::link(largeFolder().path(), house_.house.tree.path(house_.house.folder(camera))));
    }

    // Camera 0 with twelve images is on show, and camera 1 is chosen but not yet read.
    void chooseLarge()
    {
        addLarge({0, 1});
        house_.openOn(12);
        QTest::mouseClick(view(kCameras).viewport(), Qt::LeftButton, {}, middle(kCameras, 1));
        expectReading();
    }

    void expectReading()
    {
        ASSERT_GT(house_.house.scope.running(), 0);
        ASSERT_EQ(view(kImages).model()->rowCount(), 12);
    }

    // Without a turn of the event loop, in which a reading would go on.
    void point(int cell, QPointF at)
    {
        PictureView &view = house_.cell(cell);
        QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&view, &move);
    }

    void clickBox(const QString &box)
    {
        QTest::mouseClick(&house_.find<QWidget>(box), Qt::LeftButton, {}, QPoint(8, 8));
    }

    void clickView() { clickBox(QStringLiteral("cCamera")); }

    void readLargeRow()
    {
        QTest::mouseClick(view(kRowsOfGroup).viewport(), Qt::LeftButton, {},
                          middle(kRowsOfGroup, 1));
        ASSERT_GT(house_.house.scope.running(), 0);
    }

    void pauseFilm()
    {
        house_.click(QStringLiteral("bFilm"));
        house_.click(QStringLiteral("PauseCine"));
        ASSERT_EQ(house_.find<QAbstractButton>(QStringLiteral("PauseCine")).text(),
                  QStringLiteral("Start"));
    }

    QSize copied() { return QGuiApplication::clipboard()->image().size(); }

    const QString kZoom = QStringLiteral("ZoomImage");
    const QString kDate = QStringLiteral("lDate");
};

TEST_F(PlancheReading, TheLabelNamesTheCameraWhoseImagesAreOnShow)
{
    house_.openOn(12);
    const QString first = house_.text(QStringLiteral("lCamera"));
    house_.house.addCamera({0, 1}, cameraUrl({0, 1}));
    house_.house.storage.edit(QStringLiteral("C:\\half-typed")); // no folder is read meanwhile
    QTest::mouseClick(view(kCameras).viewport(), Qt::LeftButton, {}, middle(kCameras, 1));
    house_.settle();
    ASSERT_EQ(view(kImages).model()->rowCount(), 12);
    EXPECT_EQ(house_.text(QStringLiteral("lCamera")), first);
    house_.house.storage.edit(QStringLiteral("C:\\in"));
    house_.house.storage.putInForce();
    QTest::mouseClick(view(kCameras).viewport(), Qt::LeftButton, {}, middle(kCameras, 1));
    house_.settle();
    EXPECT_TRUE(house_.text(QStringLiteral("lCamera")).contains(QStringLiteral("cam")));
    EXPECT_NE(house_.text(QStringLiteral("lCamera")), first);
}

// A folder that is in force for less than a turn of the event loop may be listed all the same.
TEST_F(PlancheReading, AStorageFolderThatIsSoonTheOldOneAgainLeavesItsImagesOnShow)
{
    house_.openOn(12);
    StorageFolder &storage = house_.house.storage;
    house_.house.tree.makeFolder(u"drives/c/other");
    storage.edit(QStringLiteral("C:\\other"));
    storage.putInForce();
    QTest::mouseClick(view(kCameras).viewport(), Qt::LeftButton, {}, middle(kCameras, 0));
    ASSERT_EQ(view(kImages).model()->rowCount(), 0);
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    house_.settle();
    EXPECT_EQ(view(kImages).model()->rowCount(), 12);
    EXPECT_EQ(house_.data.files.folder(), storage.cameraFolderText({0, 0}));
}

// The folder is looked at for many reasons.
TEST_F(PlancheReading, AnotherStorageFolderIsListedOnceAndNotAtEachCheck)
{
    house_.openOn(12);
    StorageFolder &storage = house_.house.storage;
    storage.edit(QStringLiteral("C:\\other"));
    storage.putInForce();
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    house_.settle();
    QTest::mouseClick(view(kImages).viewport(), Qt::LeftButton, {}, middle(kImages, 3));
    house_.settle();
    storage.testSA();
    house_.settle();
    EXPECT_EQ(row(kImages), 3);
}

// While it is typed, no folder is read, so nothing else can have been listed.
TEST_F(PlancheReading, AStorageTextThatIsTakenBackLeavesTheImageSelected)
{
    house_.openOn(12);
    QTest::mouseClick(view(kImages).viewport(), Qt::LeftButton, {}, middle(kImages, 3));
    house_.settle();
    ASSERT_EQ(row(kImages), 3);
    StorageFolder &storage = house_.house.storage;
    storage.edit(QStringLiteral("C:\\inn"));
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    house_.settle();
    EXPECT_EQ(row(kImages), 3);
}

TEST_F(PlancheReading, TheQuestionNamesTheCameraWhoseImageItIsAbout)
{
    chooseLarge();
    QTest::keyClick(&view(kImages), Qt::Key_Delete);
    ASSERT_NE(house_.question(), nullptr);
    EXPECT_EQ(house_.question()->text(), QStringLiteral("Kill ") + storedName(11));
    EXPECT_TRUE(house_.question()->informativeText().startsWith(QStringLiteral("Camera 0:0")))
        << house_.question()->informativeText().toStdString();
    QTest::mouseClick(house_.question()->button(QMessageBox::Yes), Qt::LeftButton);
    house_.settle();
    EXPECT_FALSE(QFile::exists(house_.imagePath({0, 0}, storedName(11))));
    EXPECT_EQ(house_.house.images({0, 1}).size(), kLarge);
}

TEST_F(PlancheReading, ARightPressEnlargesTheImageUnderThePointerAtOnce)
{
    chooseLarge();
    QTest::mousePress(&house_.cell(3), Qt::RightButton);
    EXPECT_TRUE(house_.find<QWidget>(kZoom).isVisible());
    EXPECT_EQ(house_.data.sheet.zoomed().name, storedName(5));
    EXPECT_EQ(copied(), kCameraSize);
    house_.settle();
    EXPECT_EQ(copied(), kCameraSize); // the files of the other camera hold no picture
}

TEST_F(PlancheReading, AClickOnACellOfTheGroupChoosesNoImageOfTheCameraThatFollows)
{
    addLarge({0, 1});
    house_.addImages({0, 0}, 12);
    house_.open();
    house_.tick(QStringLiteral("cCamera"));
    house_.clickRow(kRowsOfGroup, 0);
    QTest::mouseClick(view(kRowsOfGroup).viewport(), Qt::LeftButton, {}, middle(kRowsOfGroup, 1));
    ASSERT_GT(house_.house.scope.running(), 0);
    QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("cCamera")), Qt::LeftButton, {},
                      QPoint(8, 8));
    QTest::mouseClick(&house_.cell(0), Qt::LeftButton);
    house_.settle();
    expectImage(11, 12);
}

TEST_F(PlancheReading, ThePointerShowsNothingWhileTheGroupViewIsBeingFilled)
{
    addLarge({0, 1});
    house_.openOn(12);
    point(4, {12, 34});
    house_.cell(4).setToolTip(QStringLiteral("old"));
    QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("cCamera")), Qt::LeftButton, {},
                      QPoint(8, 8));
    ASSERT_TRUE(house_.data.state.DirCamEnCours());
    point(4, {56, 78});
    ASSERT_TRUE(house_.data.state.DirCamEnCours());
    EXPECT_EQ(house_.text(QStringLiteral("MousePos")), QStringLiteral("12:34"));
    EXPECT_EQ(house_.cell(4).toolTip(), QStringLiteral("old"));
    house_.settle();
    point(4, {56, 78});
    EXPECT_EQ(house_.text(QStringLiteral("MousePos")), QStringLiteral("56:78"));
}

TEST_F(PlancheReading, APlayingFilmRestartsThoughARefreshOvertakesTheChoice)
{
    house_.house.settings.write(u"Control", u"Vitesse", 1000);
    addLarge({0, 1});
    house_.openOn(12);
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    QTest::mouseClick(view(kCameras).viewport(), Qt::LeftButton, {}, middle(kCameras, 1));
    expectReading();
    QTest::keyClick(&house_.window, Qt::Key_F5);
    house_.settle();
    EXPECT_EQ(house_.film.face().range, (PlayRange{1, kLarge}));
    EXPECT_EQ(house_.film.face().image.folder, house_.data.files.folder());
}

TEST_F(PlancheReading, TheFilmIsNamedAfterTheCameraWhoseImagesItPlays)
{
    const QSignalSpy shown(&house_.window, &planche::cameraShown);
    chooseLarge();
    EXPECT_EQ(shown.last().first().value<CameraAddress>(), (CameraAddress{0, 0}));
    house_.settle();
    EXPECT_EQ(shown.last().first().value<CameraAddress>(), (CameraAddress{0, 1}));
}

TEST_F(PlancheReading, AFilmToKeepIsNamedAfterTheCameraWhoseImagesAreInIt)
{
    FilmKeep keep(house_.images.filmMaker(), house_.film);
    chooseLarge();
    keep.present({});
    EXPECT_TRUE(keep.windowTitle().contains(QStringLiteral("0:0")))
        << keep.windowTitle().toStdString();
}

TEST_F(PlancheReading, TheSearchShowsThePresentTimeThoughTheGroupIsLeftBeforeItsTurn)
{
    chooseLarge();
    house_.find<QWidget>(kDate).setFocus();
    house_.find<QLineEdit>(kDate).selectAll();
    QTest::keyClicks(&house_.find<QLineEdit>(kDate), QStringLiteral("01/01/2005"));
    clickView();
    EXPECT_EQ(house_.find<QLineEdit>(kDate).text(), QStringLiteral("07/03/2006"));
    EXPECT_FALSE(house_.find<QWidget>(kDate).isEnabled());
    clickView();
    house_.settle();
    EXPECT_EQ(house_.find<QLineEdit>(kDate).text(), QStringLiteral("07/03/2006"));
    EXPECT_TRUE(house_.find<QWidget>(kDate).isEnabled());
}

TEST_F(PlancheReading, WhatIsTypedAfterTheGroupWasLeftStaysInTheSearch)
{
    chooseLarge();
    clickView();
    clickView();
    house_.find<QWidget>(kDate).setFocus();
    house_.find<QLineEdit>(kDate).selectAll();
    QTest::keyClicks(&house_.find<QLineEdit>(kDate), QStringLiteral("01/01/2005"));
    house_.settle();
    EXPECT_EQ(house_.find<QLineEdit>(kDate).text(), QStringLiteral("01/01/2005"));
}

// A paused film keeps its list over a choice of the group alone.
TEST_F(PlancheReading, APausedFilmHasTheListOfTheCameraChosenThoughTheGroupViewOvertakesIt)
{
    house_.house.settings.write(u"Control", u"Vitesse", 1000);
    addLarge({0, 1});
    house_.openOn(12);
    pauseFilm();
    QTest::mouseClick(view(kCameras).viewport(), Qt::LeftButton, {}, middle(kCameras, 1));
    expectReading();
    clickView();
    house_.settle();
    EXPECT_EQ(view(kImages).model()->rowCount(), kLarge);
}

TEST_F(PlancheReading, APausedFilmHasTheListOfTheCameraChosenThoughARefreshOfTheGroupOvertakesIt)
{
    house_.house.settings.write(u"Control", u"Vitesse", 1000);
    addLarge({0, 1});
    openGroup();
    pauseFilm();
    QTest::mouseClick(view(kCameras).viewport(), Qt::LeftButton, {}, middle(kCameras, 1));
    ASSERT_GT(house_.house.scope.running(), 0);
    clickBox(QStringLiteral("cAuto"));
    house_.settle();
    EXPECT_EQ(view(kImages).model()->rowCount(), kLarge);
}

TEST_F(PlancheReading, APausedFilmKeepsItsListThoughARefreshOfItWasOvertakenBefore)
{
    house_.addImages({1, 0}, 3);
    house_.openOn(12);
    pauseFilm();
    house_.house.putImage({0, 0}, storedName(30), pictureBytes(Qt::red));
    house_.busy.setCost(std::chrono::milliseconds{10});
    clickBox(QStringLiteral("cAuto"));
    expectReading();
    clickView();
    house_.settle();
    house_.clickRow(kGroups, 1);
    EXPECT_EQ(view(kImages).model()->rowCount(), 12);
}

// What the click has selected in the list of cameras is not taken back.
TEST_F(PlancheReading, ARowOfAGroupThatIsBeingLeftIsTheCameraOfTheNextGroup)
{
    addLarge({0, 1});
    openGroup();
    readLargeRow();
    QTest::mouseClick(view(kGroups).viewport(), Qt::LeftButton, {}, middle(kGroups, 1));
    QTest::mouseClick(view(kRowsOfGroup).viewport(), Qt::LeftButton, {}, middle(kRowsOfGroup, 5));
    EXPECT_EQ(row(kCameras), 5);
    house_.settle();
    EXPECT_EQ(row(kGroups), 1);
    EXPECT_EQ(row(kCameras), 5);
    EXPECT_EQ(row(kRowsOfGroup), -1);
}

TEST_F(PlancheReading, ARowOfAGroupViewThatIsBeingLeftIsTheCameraThatFollows)
{
    addLarge({0, 1});
    openGroup();
    readLargeRow();
    clickView();
    QTest::mouseClick(view(kRowsOfGroup).viewport(), Qt::LeftButton, {}, middle(kRowsOfGroup, 5));
    EXPECT_EQ(row(kCameras), 5);
    house_.settle();
    EXPECT_EQ(row(kCameras), 5);
    expectImage(3, 4);
}

// Nothing is selected then from which the cells could be counted.
TEST_F(PlancheReading, AClickOnAnEmptyCellChoosesNothing)
{
    house_.openOn(12);
    house_.key(kImages, Qt::Key_Home);
    house_.house.putImage({0, 0}, storedName(30), pictureBytes(Qt::red));
    house_.busy.setCost(std::chrono::milliseconds{10});
    QTest::mouseClick(view(kGroups).viewport(), Qt::LeftButton, {}, middle(kGroups, 0));
    ASSERT_GT(house_.house.scope.running(), 0);
    ASSERT_TRUE(house_.data.sheet.image(5).isNone());
    QTest::mouseClick(&house_.cell(5), Qt::LeftButton);
    EXPECT_EQ(row(kImages), -1);
    house_.settle();
    expectImage(12, 13);
}

// The list that the button is about is the old one again, without having been read anew.
TEST_F(PlancheReading, TheFilmButtonIsBackWithTheGroupThatIsBackBeforeTheNextWasRead)
{
    addLarge({1, 0});
    openGroup(0);
    QTest::mouseClick(view(kGroups).viewport(), Qt::LeftButton, {}, middle(kGroups, 1));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !house_.browser.face().isFilmEnabled; }));
    ASSERT_GT(house_.house.scope.running(), 0);
    QTest::mouseClick(view(kGroups).viewport(), Qt::LeftButton, {}, middle(kGroups, 0));
    house_.settle();
    EXPECT_TRUE(isFilmEnabled());
    house_.click(QStringLiteral("bFilm"));
    EXPECT_TRUE(house_.filmWindow.isVisible());
}

} // namespace
} // namespace velmora::test
