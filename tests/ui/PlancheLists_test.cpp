// The lists of the browser's window under mouse and keys: choosing, stepping, enlarging, deleting,
// playing.
#include "BrowserWindowHouse.h"

#include <QAccessible>
#include <QFile>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class PlancheLists : public testing::Test
{
protected:
    int row(const QString &list) { return house_.find<QListView>(list).currentIndex().row(); }

    int rows(const QString &list) { return house_.find<QListView>(list).model()->rowCount(); }

    bool isVisible(const QString &control) { return house_.find<QWidget>(control).isVisible(); }

    bool exists(CameraAddress camera, int second)
    {
        return QFile::exists(house_.imagePath(camera, storedName(second)));
    }

    // What a screen reader does with a row of a list.
    void chooseAsReader(const QString &list, int row)
    {
        QAccessibleInterface *const rows =
            QAccessible::queryAccessibleInterface(&house_.find<QListView>(list));
        QAccessibleActionInterface *const told = rows->child(row)->actionInterface();
        told->doAction(QAccessibleActionInterface::toggleAction());
        house_.settle();
    }

    int highlighted(const QString &list)
    {
        const auto rows = house_.find<QListView>(list).selectionModel()->selectedIndexes();
        return rows.isEmpty() ? -1 : rows.constFirst().row();
    }

    // The same cameras in group view: camera 0 with three images, camera 2 with two.
    void openGroup()
    {
        house_.addImages({0, 0}, 3);
        house_.addImages({0, 2}, 2);
        house_.open();
        house_.tick(QStringLiteral("cCamera"));
    }

    BrowserWindowHouse house_;
};

TEST_F(PlancheLists, ShowsTheNewestImagesOfTheStoredChoice)
{
    house_.addImages({3, 4}, 12);
    house_.house.settings.write(u"Control", u"lstP", 3);
    house_.house.settings.write(u"Control", u"lstImg", 4);
    house_.open();
    EXPECT_EQ(row(QStringLiteral("lstGroupe")), 3);
    EXPECT_EQ(row(QStringLiteral("lstCam")), 4);
    EXPECT_EQ(rows(QStringLiteral("LstDir")), 12);
    EXPECT_EQ(row(QStringLiteral("LstDir")), 11);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("12 / 12"));
    EXPECT_EQ(house_.shown(9), storedName(11));
    EXPECT_EQ(house_.shown(0), storedName(2));
}

TEST_F(PlancheLists, TellInTheTipOfALateCameraItsNameAndThatItIsLate)
{
    house_.house.settings.write(u"Camera02", u"Name", QStringLiteral("Garage"));
    house_.addImages({0, 2}, 1);
    house_.open();
    const QListWidgetItem &item = *house_.find<QListWidget>(QStringLiteral("lstCam")).item(2);
    const QString known = item.toolTip();
    ASSERT_TRUE(known.contains(QStringLiteral("Garage"))) << known.toStdString();
    house_.window.showLate({{0, 2}});
    EXPECT_EQ(item.toolTip(), known + QStringLiteral("\nlate: nothing new for a long time"));
    EXPECT_TRUE(item.font().bold());
    house_.window.showLate({});
    EXPECT_FALSE(item.font().bold());
    EXPECT_EQ(item.toolTip(), known);
}

TEST_F(PlancheLists, AFolderWithoutImagesShowsNothing)
{
    house_.openOn(0);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("0"));
    EXPECT_FALSE(house_.find<QWidget>(QStringLiteral("bFilm")).isEnabled());
    EXPECT_EQ(house_.framed(), QList<int>());
    for (int i = 0; i < kCells; ++i) {
        EXPECT_EQ(house_.shown(i), QString());
    }
}

TEST_F(PlancheLists, AClickOnAGroupShowsItAndIsStored)
{
    house_.addImages({2, 0}, 3);
    house_.open();
    house_.clickRow(QStringLiteral("lstGroupe"), 2);
    EXPECT_EQ(house_.stored(u"lstP"), QStringLiteral("2"));
    EXPECT_EQ(house_.shown(2), storedName(2));
}

TEST_F(PlancheLists, NothingHappensUntilTheButtonIsReleased)
{
    house_.openOn(1);
    auto &list = house_.find<QListWidget>(QStringLiteral("lstCam"));
    const QPoint at = list.visualItemRect(list.item(5)).center();
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, at);
    house_.settle();
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("0"));
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, at);
    house_.settle();
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("5"));
}

TEST_F(PlancheLists, KeysOnTheListOfCamerasShowTheCamera)
{
    house_.addImages({0, 1}, 4);
    house_.open();
    house_.key(QStringLiteral("lstCam"), Qt::Key_Down);
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("1"));
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("4 / 4"));
}

TEST_F(PlancheLists, AnyKeyOnTheListOfCamerasReadsTheFolderAgain)
{
    house_.openOn(2);
    house_.house.putImage({0, 0}, storedName(2), pictureBytes(Qt::red));
    house_.key(QStringLiteral("lstCam"), Qt::Key_Insert);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("3 / 3"));
}

TEST_F(PlancheLists, KeysOnTheListOfGroupsShowTheGroup)
{
    house_.addImages({1, 0}, 4);
    house_.open();
    house_.key(QStringLiteral("lstGroupe"), Qt::Key_Down);
    EXPECT_EQ(house_.stored(u"lstP"), QStringLiteral("1"));
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("4 / 4"));
}

TEST_F(PlancheLists, ArrowsStepThroughTheImages)
{
    house_.openOn(30);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Up);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("29 / 30"));
    EXPECT_EQ(house_.framed(), QList<int>{8});
    house_.key(QStringLiteral("LstDir"), Qt::Key_Home);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("1 / 30"));
    EXPECT_EQ(house_.framed(), QList<int>{0});
    EXPECT_EQ(house_.shown(0), storedName(0));
}

TEST_F(PlancheLists, InTheMiddleTheSelectedImageStandsInTheFifthCell)
{
    house_.openOn(30);
    house_.clickRow(QStringLiteral("LstDir"), 15);
    EXPECT_EQ(house_.framed(), QList<int>{4});
    EXPECT_EQ(house_.shown(4), storedName(15));
}

TEST_F(PlancheLists, EnterEnlargesAndPutsAway)
{
    house_.openOn(12);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Return);
    EXPECT_TRUE(isVisible(QStringLiteral("ZoomImage")));
    EXPECT_EQ(house_.shown(QStringLiteral("ZoomImage")), storedName(11));
    house_.key(QStringLiteral("LstDir"), Qt::Key_Enter);
    EXPECT_FALSE(isVisible(QStringLiteral("ZoomImage")));
    EXPECT_EQ(house_.shown(QStringLiteral("ZoomImage")), QString());
}

TEST_F(PlancheLists, TheEnlargedImageFollowsTheSelection)
{
    house_.openOn(12);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Return);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Up);
    EXPECT_TRUE(isVisible(QStringLiteral("ZoomImage")));
    EXPECT_EQ(house_.shown(QStringLiteral("ZoomImage")), storedName(10));
}

TEST_F(PlancheLists, EscapePutsTheEnlargedImageAway)
{
    house_.openOn(12);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Return);
    house_.keyInWindow(Qt::Key_Escape);
    EXPECT_FALSE(isVisible(QStringLiteral("ZoomImage")));
}

TEST_F(PlancheLists, DeleteAsksFirst)
{
    house_.openOn(3);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    const QMessageBox *const box = house_.question();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isVisible());
    EXPECT_EQ(box->windowTitle(), QStringLiteral("Del "));
    EXPECT_EQ(box->text(), QStringLiteral("Kill ") + storedName(2));
    EXPECT_EQ(box->icon(), QMessageBox::Critical);
    EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(box->standardButton(box->defaultButton()), QMessageBox::No);
    EXPECT_TRUE(exists({0, 0}, 2));
}

TEST_F(PlancheLists, YesDeletesAndShowsWhatIsLeft)
{
    house_.openOn(3);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    QTest::mouseClick(house_.question()->button(QMessageBox::Yes), Qt::LeftButton);
    house_.settle();
    EXPECT_FALSE(exists({0, 0}, 2));
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("2 / 2"));
    EXPECT_EQ(house_.framed(), QList<int>{1});
    EXPECT_EQ(house_.shown(2), QString());
    EXPECT_EQ(house_.question(), nullptr);
}

TEST_F(PlancheLists, YesDeletesNothingOnceAnotherStorageFolderIsInForce)
{
    house_.house.tree.makeFolder(u"drives/c/other");
    house_.openOn(3);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    const QString old = house_.imagePath({0, 0}, storedName(2));
    house_.house.storage.edit(QStringLiteral("C:\\other"));
    house_.house.storage.putInForce();
    house_.settle();
    QTest::mouseClick(house_.question()->button(QMessageBox::Yes), Qt::LeftButton);
    house_.settle();
    EXPECT_TRUE(QFile::exists(old));
    EXPECT_TRUE(house_.text(QStringLiteral("txtLog")).startsWith(storedName(2)))
        << house_.text(QStringLiteral("txtLog")).toStdString();
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("0"));
}

TEST_F(PlancheLists, YesDeletesNothingWhileAnotherStorageFolderIsTyped)
{
    house_.openOn(3);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    house_.house.storage.beginEdit();
    house_.house.storage.edit(QStringLiteral("C:\\oth"));
    QTest::mouseClick(house_.question()->button(QMessageBox::Yes), Qt::LeftButton);
    house_.settle();
    EXPECT_TRUE(exists({0, 0}, 2));
    EXPECT_TRUE(house_.text(QStringLiteral("txtLog")).startsWith(storedName(2)))
        << house_.text(QStringLiteral("txtLog")).toStdString();
}

TEST_F(PlancheLists, NoKeepsTheImage)
{
    house_.openOn(3);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    QTest::mouseClick(house_.question()->button(QMessageBox::No), Qt::LeftButton);
    house_.settle();
    EXPECT_TRUE(exists({0, 0}, 2));
    EXPECT_EQ(house_.question(), nullptr);
}

TEST_F(PlancheLists, EscapeAndEnterKeepTheImage)
{
    for (const Qt::Key answer : {Qt::Key_Escape, Qt::Key_Return}) {
        BrowserWindowHouse house;
        house.openOn(3);
        house.key(QStringLiteral("LstDir"), Qt::Key_Delete);
        ASSERT_NE(house.question(), nullptr);
        QTest::keyClick(house.question(), answer);
        house.settle();
        EXPECT_TRUE(QFile::exists(house.imagePath({0, 0}, storedName(2))));
        EXPECT_EQ(house.question(), nullptr);
    }
}

TEST_F(PlancheLists, AVanishedFileIsNotAskedAbout)
{
    house_.openOn(3);
    QFile::remove(house_.imagePath({0, 0}, storedName(2)));
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    EXPECT_EQ(house_.question(), nullptr);
}

TEST_F(PlancheLists, DeletingTheLastImageLeavesAnEmptySheet)
{
    house_.openOn(1);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    QTest::mouseClick(house_.question()->button(QMessageBox::Yes), Qt::LeftButton);
    house_.settle();
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("0"));
    EXPECT_FALSE(house_.find<QWidget>(QStringLiteral("bFilm")).isEnabled());
    EXPECT_EQ(house_.shown(0), QString());
    EXPECT_EQ(house_.framed(), QList<int>());
}

TEST_F(PlancheLists, ADoubleClickOnTheListOpensTheFolder)
{
    house_.openOn(3);
    auto &list = house_.find<QListView>(QStringLiteral("LstDir"));
    const QPoint at = list.visualRect(list.model()->index(1, 0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
    house_.settle();
    ASSERT_EQ(house_.opener.opened.size(), 1);
    EXPECT_EQ(QDir::cleanPath(house_.opener.opened.first()),
              house_.house.tree.path(house_.house.folder({0, 0})));
}

TEST_F(PlancheLists, SpacePlaysAndPauses)
{
    house_.openOn(12);
    house_.click(QStringLiteral("bFilm"));
    ASSERT_TRUE(house_.film.isRunning());
    house_.window.activateWindow(); // the film's own keys work in its window only
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    house_.key(QStringLiteral("LstDir"), Qt::Key_Space);
    EXPECT_FALSE(house_.film.isRunning());
    house_.key(QStringLiteral("LstDir"), Qt::Key_Space);
    EXPECT_TRUE(house_.film.isRunning());
}

TEST_F(PlancheLists, F5ReadsTheFolderAgain)
{
    house_.openOn(2);
    house_.house.putImage({0, 0}, storedName(2), pictureBytes(Qt::red));
    house_.keyInWindow(Qt::Key_F5);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("3 / 3"));
    EXPECT_EQ(house_.shown(2), storedName(2));
}

TEST_F(PlancheLists, ATypedCharacterSelectsTheNextNameThatBeginsSo)
{
    house_.openOn(30);
    house_.clickRow(QStringLiteral("LstDir"), 15);
    house_.key(QStringLiteral("LstDir"), Qt::Key_2);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("17 / 30"));
    EXPECT_EQ(house_.shown(4), storedName(16));
}

TEST_F(PlancheLists, ACharacterWithWhichNoNameBeginsSelectsNothing)
{
    house_.openOn(30);
    house_.key(QStringLiteral("LstDir"), Qt::Key_X);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("30 / 30"));
}

TEST_F(PlancheLists, TheImageThatAScreenReaderChoosesIsTheOneThatIsDeleted)
{
    house_.openOn(5);
    chooseAsReader(QStringLiteral("LstDir"), 1);
    EXPECT_EQ(highlighted(QStringLiteral("LstDir")), 1);
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("2 / 5"));
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    ASSERT_NE(house_.question(), nullptr);
    EXPECT_EQ(house_.question()->text(), QStringLiteral("Kill ") + storedName(1));
}

TEST_F(PlancheLists, AScreenReaderChoosesACamera)
{
    house_.addImages({0, 0}, 3);
    house_.addImages({0, 2}, 4);
    house_.open();
    chooseAsReader(QStringLiteral("lstCam"), 2);
    EXPECT_EQ(highlighted(QStringLiteral("lstCam")), 2);
    EXPECT_EQ(house_.stored(u"lstImg"), QStringLiteral("2"));
    EXPECT_EQ(rows(QStringLiteral("LstDir")), 4);
}

TEST_F(PlancheLists, AScreenReaderChoosesACameraOfTheGroupView)
{
    openGroup();
    chooseAsReader(QStringLiteral("LstDirCam"), 2);
    EXPECT_EQ(highlighted(QStringLiteral("LstDirCam")), 2);
    EXPECT_EQ(house_.framed(), QList<int>{2});
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("2"));
}

TEST_F(PlancheLists, GroupViewListsTheNewestImageOfEachCamera)
{
    openGroup();
    EXPECT_TRUE(isVisible(QStringLiteral("LstDirCam")));
    EXPECT_FALSE(isVisible(QStringLiteral("LstDir")));
    const auto *const model = house_.find<QListView>(QStringLiteral("LstDirCam")).model();
    ASSERT_EQ(model->rowCount(), 10);
    EXPECT_EQ(model->index(0, 0).data().toString(), storedName(2) + QStringLiteral("  "));
    EXPECT_EQ(model->index(1, 0).data().toString(), QString());
    EXPECT_EQ(house_.shown(2), storedName(1));
    EXPECT_EQ(house_.shown(1), QString());
}

TEST_F(PlancheLists, ARowOfTheGroupViewSelectsItsCamera)
{
    openGroup();
    house_.clickRow(QStringLiteral("LstDirCam"), 2);
    EXPECT_EQ(row(QStringLiteral("lstCam")), 2);
    EXPECT_EQ(house_.framed(), QList<int>{2});
    EXPECT_EQ(house_.text(QStringLiteral("NbI")), QStringLiteral("2"));
}

TEST_F(PlancheLists, DeleteInGroupViewAsksForTheNewestAndShowsTheNext)
{
    openGroup();
    house_.clickRow(QStringLiteral("LstDirCam"), 2);
    house_.key(QStringLiteral("LstDirCam"), Qt::Key_Delete);
    ASSERT_NE(house_.question(), nullptr);
    EXPECT_EQ(house_.question()->text(), QStringLiteral("Kill ") + storedName(1));
    EXPECT_EQ(house_.question()->windowTitle(), QStringLiteral("Del "));
    QTest::mouseClick(house_.question()->button(QMessageBox::Yes), Qt::LeftButton);
    house_.settle();
    EXPECT_FALSE(exists({0, 2}, 1));
    EXPECT_EQ(house_.shown(2), storedName(0));
    EXPECT_EQ(house_.shown(0), storedName(2));
    EXPECT_EQ(house_.framed(), QList<int>{2});
}

TEST_F(PlancheLists, DeleteOnACameraWithoutImagesAsksNothing)
{
    openGroup();
    house_.clickRow(QStringLiteral("LstDirCam"), 1);
    house_.key(QStringLiteral("LstDirCam"), Qt::Key_Delete);
    EXPECT_EQ(house_.question(), nullptr);
}

TEST_F(PlancheLists, ArrowsInTheGroupViewSelectCameras)
{
    openGroup();
    house_.clickRow(QStringLiteral("LstDirCam"), 1);
    house_.key(QStringLiteral("LstDirCam"), Qt::Key_Down);
    EXPECT_EQ(row(QStringLiteral("lstCam")), 2);
    EXPECT_EQ(row(QStringLiteral("LstDirCam")), 2);
    EXPECT_EQ(house_.framed(), QList<int>{2});
}

} // namespace
} // namespace velmora::test
