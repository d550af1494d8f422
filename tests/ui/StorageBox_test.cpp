// The storage line of the main window, typed into key by key.
#include "DroppedText.h"
#include "FileBoxHands.h"
#include "WindowHouse.h"

#include <QFileDialog>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class StorageBoxTest : public testing::Test
{
protected:
    QLineEdit &box() { return house_.find<QLineEdit>(QStringLiteral("StRep")); }

    int lamp() { return house_.find<Lamp>(QStringLiteral("LampSA")).FillColor(); }

    bool importEnabled()
    {
        return house_.find<QAbstractButton>(QStringLiteral("Import")).isEnabled();
    }

    bool makeDirVisible()
    {
        return house_.find<QAbstractButton>(QStringLiteral("MakeDir")).isVisible();
    }

    WindowHouse house_;
};

TEST_F(StorageBoxTest, ShowsAFolderThatIsThere)
{
    EXPECT_EQ(box().text(), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(box().toolTip(), house_.house.tree.path(u"drives/c/in"));
    EXPECT_EQ(lamp(), 65280);
    EXPECT_TRUE(importEnabled());
    EXPECT_FALSE(makeDirVisible());
}

TEST_F(StorageBoxTest, ChecksAtEveryKeystroke)
{
    house_.type(QStringLiteral("StRep"), QStringLiteral("x"));
    EXPECT_EQ(box().text(), QStringLiteral("C:\\in\\x\\"));
    EXPECT_EQ(lamp(), 255);
    EXPECT_FALSE(importEnabled());
    EXPECT_TRUE(makeDirVisible());
    EXPECT_EQ(house_.stored(u"Control", u"StRep"), QStringLiteral("C:\\in\\x\\"));
    QTest::keyClick(&box(), Qt::Key_Backspace);
    EXPECT_EQ(lamp(), 65280);
}

TEST_F(StorageBoxTest, APathTypedKeyByKeyComesOutAsTyped)
{
    for (const QString &path : {QStringLiteral("C:\\in\\sub"), QStringLiteral("D:\\My Pics"),
                                QStringLiteral("/srv/cams")}) {
        house_.retype(QStringLiteral("StRep"), QString());
        QTest::keyClicks(&box(), path);
        QString expected = path + u'\\';
        expected.replace(u'/', u'\\').remove(u' ');
        EXPECT_EQ(box().text(), expected);
        EXPECT_EQ(house_.stored(u"Control", u"StRep"), expected);
    }
}

TEST_F(StorageBoxTest, TheCaretStaysWhereTheUserTypes)
{
    house_.retype(QStringLiteral("StRep"), QStringLiteral("C:\\in"));
    box().setCursorPosition(3);
    QTest::keyClicks(&box(), QStringLiteral("ab "));
    EXPECT_EQ(box().text(), QStringLiteral("C:\\abin\\"));
    EXPECT_EQ(box().cursorPosition(), 5);
}

TEST_F(StorageBoxTest, TheFocusStopsEveryTimer)
{
    ASSERT_TRUE(house_.house.timer.isActive());
    QTest::mouseClick(&box(), Qt::LeftButton);
    EXPECT_FALSE(house_.house.timer.isActive());
    EXPECT_TRUE(house_.house.storage.isBeingEdited());
    EXPECT_FALSE(importEnabled());
    EXPECT_TRUE(house_.house.logText().contains(QStringLiteral("arret Timers")));
}

TEST_F(StorageBoxTest, LeavingTheBoxLetsTheCaptureGoOn)
{
    QTest::mouseClick(&box(), Qt::LeftButton);
    house_.leaveBox();
    EXPECT_TRUE(house_.house.timer.isActive());
    EXPECT_FALSE(house_.house.storage.isBeingEdited());
    EXPECT_TRUE(importEnabled());
}

TEST_F(StorageBoxTest, LeavingTheBoxWithAMissingFolderKeepsTheTimersStopped)
{
    house_.type(QStringLiteral("StRep"), QStringLiteral("x"));
    house_.leaveBox();
    EXPECT_FALSE(house_.house.timer.isActive());
    EXPECT_FALSE(house_.house.storage.isBeingEdited());
}

TEST_F(StorageBoxTest, SaysWhatToDoWhileTheFolderIsMissing)
{
    const auto message = [this] { return house_.find<QLabel>(QStringLiteral("lMessage")).text(); };
    house_.type(QStringLiteral("StRep"), QStringLiteral("x"));
    EXPECT_TRUE(message().contains(QStringLiteral("does not exist")));
    QTest::keyClick(&box(), Qt::Key_Backspace);
    EXPECT_EQ(message(), QString());
}

TEST_F(StorageBoxTest, ATickWhileTypingLoadsNothing)
{
    house_.house.addCamera({0, 0}, QStringLiteral("http://cam/a.png"));
    house_.type(QStringLiteral("StRep"), QStringLiteral("x"));
    QTest::keyClick(&box(), Qt::Key_Backspace); // the folder is there again, the box still edited
    house_.house.tick();
    EXPECT_TRUE(house_.source.requested().isEmpty());
}

TEST_F(StorageBoxTest, TheButtonMakesTheFolderAndThoseOfTheCameras)
{
    house_.house.addCamera({4, 2}, QStringLiteral("ABCxyz"));
    house_.type(QStringLiteral("StRep"), QStringLiteral("a\\b"));
    house_.click(QStringLiteral("MakeDir"));
    EXPECT_TRUE(house_.house.tree.exists(u"drives/c/in/a/b/ABCxyz"));
    EXPECT_EQ(lamp(), 65280);
    EXPECT_EQ(box().text(), QStringLiteral("C:\\in\\a\\b\\"));
    EXPECT_EQ(house_.stored(u"Control", u"StRep"), QStringLiteral("C:\\in\\a\\b\\"));
    EXPECT_EQ(house_.house.scheduler.ticksLeft(), 5);
    EXPECT_FALSE(house_.house.storage.isBeingEdited());
}

TEST_F(StorageBoxTest, TheButtonThatGoesLeavesItsKeysToNoBox)
{
    house_.type(QStringLiteral("StRep"), QStringLiteral("x"));
    auto &button = house_.find<QAbstractButton>(QStringLiteral("MakeDir"));
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    ASSERT_FALSE(button.isVisible());
    QWidget *const focused = house_.window.focusWidget();
    QTest::keyClick(focused, Qt::Key_Space); // pressed twice
    EXPECT_EQ(house_.house.options.tempo(), QStringLiteral("60"))
        << focused->objectName().toStdString();
}

TEST_F(StorageBoxTest, SaysThatAFolderCannotBeMade)
{
    house_.house.tree.write(u"drives/c/file", "x");
    house_.retype(QStringLiteral("StRep"), QStringLiteral("C:\\file\\sub"));
    house_.click(QStringLiteral("MakeDir"));
    EXPECT_EQ(lamp(), 255);
    EXPECT_FALSE(house_.house.allTexts().filter(QStringLiteral("cannot be made")).isEmpty());
}

TEST_F(StorageBoxTest, SaysThatTheDriveIsMissing)
{
    house_.retype(QStringLiteral("StRep"), QStringLiteral("Q:\\x"));
    house_.click(QStringLiteral("MakeDir"));
    EXPECT_FALSE(house_.house.allTexts().filter(QStringLiteral("no such drive")).isEmpty());
}

TEST_F(StorageBoxTest, AChosenFolderBecomesTheStorage)
{
    house_.house.tree.makeFolder(u"drives/c/pictures");
    house_.house.storage.choose(house_.house.tree.path(u"drives/c/pictures"));
    EXPECT_EQ(box().text(), QStringLiteral("C:\\pictures\\"));
    EXPECT_EQ(lamp(), 65280);
    EXPECT_EQ(house_.stored(u"Control", u"StRep"), QStringLiteral("C:\\pictures\\"));
}

TEST_F(StorageBoxTest, TheBrowseButtonLetsAFolderBeChosenWithoutChangingAny)
{
    house_.house.tree.makeFolder(u"drives/c/pictures");
    house_.click(QStringLiteral("Browse"));
    auto *const dialog = house_.window.findChild<QFileDialog *>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
    EXPECT_TRUE(dialog->testOption(QFileDialog::ReadOnly));
    EXPECT_EQ(dialog->directory().path(), house_.house.tree.path(u"drives/c/in"));
    Q_EMIT dialog->filesSelected({house_.house.tree.path(u"drives/c/pictures")});
    EXPECT_EQ(box().text(), QStringLiteral("C:\\pictures\\"));
    dialog->close();
}

// A file may be long in answering, or never answer.
TEST_F(StorageBoxTest, TheFilesOfAFolderThatIsBrowsedAreNotOpened)
{
    house_.house.tree.write(u"drives/c/pictures/of no kind", "x");
    house_.click(QStringLiteral("Browse"));
    EXPECT_EQ(filesOpenedForListing(house_.window, house_.house.tree.path(u"drives/c/pictures")),
              QStringList());
    house_.window.findChild<QFileDialog *>()->close();
}

TEST_F(StorageBoxTest, TheDialogGoesWithTheMenuOfItsRows)
{
    house_.click(QStringLiteral("Browse"));
    EXPECT_TRUE(goesWithWhatItOpens(house_.window, &openRowsMenu));
}

TEST_F(StorageBoxTest, AChosenFolderWithABlankIsRefused)
{
    house_.house.tree.makeFolder(u"drives/c/My Pics");
    house_.house.storage.choose(house_.house.tree.path(u"drives/c/My Pics"));
    EXPECT_EQ(box().text(), QStringLiteral("C:\\in\\"));
    EXPECT_FALSE(house_.house.allTexts().filter(QStringLiteral("blank")).isEmpty());
}

class TypedFolder : public StorageBoxTest
{
protected:
    TypedFolder() { house_.house.tree.makeFolder(u"drives/c/other"); }

    void typeOther() { house_.retype(QStringLiteral("StRep"), QStringLiteral("C:\\other")); }

    void bringUp(QWidget &window)
    {
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    StorageFolder &storage() { return house_.house.storage; }

    bool timerRuns() { return house_.house.timer.isActive(); }

    QString step() { return house_.find<QLabel>(QStringLiteral("lErr")).text(); }

    QWidget another_;
    const QString kIn = QStringLiteral("C:\\in\\");
    const QString kOther = QStringLiteral("C:\\other\\");
};

TEST_F(TypedFolder, IsInForceWithEnterWhichGivesTheFocusAway)
{
    typeOther();
    EXPECT_EQ(storage().inForce(), kIn);
    EXPECT_EQ(step(), QStringLiteral("Pause"));
    QTest::keyClick(&box(), Qt::Key_Return);
    EXPECT_FALSE(box().hasFocus());
    EXPECT_EQ(storage().inForce(), kOther);
    EXPECT_TRUE(timerRuns());
    EXPECT_EQ(step(), QStringLiteral("Wait"));
}

TEST_F(TypedFolder, WaitsBehindAnotherWindow)
{
    typeOther();
    bringUp(another_);
    EXPECT_EQ(storage().inForce(), kIn);
    EXPECT_FALSE(timerRuns());
    EXPECT_TRUE(house_.house.status.text(Caption::Standstill)
                    .contains(QStringLiteral("waits for the storage folder")));
    bringUp(house_.window);
    EXPECT_EQ(box().text(), kOther);
    EXPECT_TRUE(box().hasFocus());
    house_.leaveBox();
    EXPECT_EQ(storage().inForce(), kOther);
    EXPECT_TRUE(timerRuns());
}

TEST_F(TypedFolder, ThatIsTheOldOneAgainDoesNotHoldTheCaptureBehindAnotherWindow)
{
    house_.type(QStringLiteral("StRep"), QStringLiteral("x"));
    QTest::keyClick(&box(), Qt::Key_Backspace);
    bringUp(another_);
    EXPECT_TRUE(timerRuns());
    EXPECT_EQ(house_.house.status.text(Caption::Standstill), QString());
    bringUp(house_.window);
    EXPECT_FALSE(timerRuns()) << "the cursor stands in the box again";
}

TEST_F(TypedFolder, ThatADropBehindAnotherWindowMakesTheOldOneDoesNotHoldTheCapture)
{
    box().setFocus();
    box().selectAll();
    QTest::keyClick(&box(), Qt::Key_Delete);
    bringUp(another_);
    ASSERT_FALSE(timerRuns());
    dropText(box(), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(box().text(), storage().inForce());
    EXPECT_TRUE(timerRuns());
}

TEST_F(TypedFolder, IsInForceWhenTheFocusWentElsewhereBehindAnotherWindow)
{
    typeOther();
    bringUp(another_);
    house_.find<QWidget>(QStringLiteral("cDebug")).setFocus();
    bringUp(house_.window);
    EXPECT_EQ(storage().inForce(), kOther);
    EXPECT_TRUE(timerRuns());
}

TEST_F(TypedFolder, IsMadeByItsKeyAndInForceWithTheFocusElsewhere)
{
    house_.retype(QStringLiteral("StRep"), QStringLiteral("C:\\new"));
    QTest::keyClick(&box(), Qt::Key_F, Qt::AltModifier); // shows the button pressed for a moment
    const auto isMade = [this] { return house_.house.tree.exists(u"drives/c/new"); };
    EXPECT_TRUE(QTest::qWaitFor(isMade));
    EXPECT_EQ(storage().inForce(), QStringLiteral("C:\\new\\"));
    EXPECT_FALSE(box().hasFocus());
    EXPECT_TRUE(timerRuns());
    EXPECT_EQ(house_.find<QLabel>(QStringLiteral("lMessage")).text(),
              QStringLiteral("The storage folder C:\\new\\ was made"));
}

TEST_F(TypedFolder, GivesWayToAChosenOneWhateverTheLampWas)
{
    house_.type(QStringLiteral("StRep"), QStringLiteral("x"));
    house_.leaveBox();
    QTest::mouseClick(&box(), Qt::LeftButton);
    house_.click(QStringLiteral("Browse"));
    auto *const dialog = house_.window.findChild<QFileDialog *>();
    ASSERT_NE(dialog, nullptr);
    Q_EMIT dialog->filesSelected({house_.house.tree.path(u"drives/c/other")});
    dialog->close();
    bringUp(house_.window);
    EXPECT_EQ(storage().inForce(), kOther);
    EXPECT_EQ(lamp(), 65280);
    EXPECT_TRUE(timerRuns());
    EXPECT_FALSE(box().hasFocus());
}

TEST_F(TypedFolder, ThatIsMissingLetsTheDialogBeginInTheNearestOneAbove)
{
    house_.type(QStringLiteral("StRep"), QStringLiteral("x\\y"));
    house_.leaveBox();
    house_.click(QStringLiteral("Browse"));
    auto *const dialog = house_.window.findChild<QFileDialog *>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->directory().path(), house_.house.tree.path(u"drives/c/in"));
    dialog->close();
}

TEST_F(TypedFolder, IsTheLastOfThoseThatADialogNames)
{
    house_.click(QStringLiteral("Browse"));
    auto *const dialog = house_.window.findChild<QFileDialog *>();
    ASSERT_NE(dialog, nullptr);
    Q_EMIT dialog->filesSelected(
        {house_.house.tree.path(u"drives/c"), house_.house.tree.path(u"drives/c/other")});
    EXPECT_EQ(storage().inForce(), kOther);
    dialog->close();
}

TEST_F(TypedFolder, WaitsWhileAnotherIsSoughtAndStaysWhenThatIsCancelled)
{
    typeOther();
    house_.click(QStringLiteral("Browse"));
    EXPECT_EQ(storage().inForce(), kIn);
    house_.window.findChild<QFileDialog *>()->reject();
    bringUp(house_.window);
    EXPECT_EQ(box().text(), kOther);
    EXPECT_EQ(storage().inForce(), kIn);
}

TEST_F(TypedFolder, IsTheOldOneAgainWhenTheBoxIsLeftEmpty)
{
    house_.retype(QStringLiteral("StRep"), QString());
    bringUp(another_);
    EXPECT_EQ(storage().inForce(), kIn);
    EXPECT_FALSE(timerRuns());
    bringUp(house_.window);
    house_.leaveBox();
    EXPECT_EQ(box().text(), kIn);
    EXPECT_EQ(house_.stored(u"Control", u"StRep"), kIn);
    EXPECT_TRUE(house_.find<QLabel>(QStringLiteral("lMessage"))
                    .text()
                    .contains(QStringLiteral("left empty")));
}

TEST_F(TypedFolder, IsNotWhatAFolderLinkOpens)
{
    house_.house.addCamera({0, 0}, QStringLiteral("cam"));
    typeOther();
    EXPECT_EQ(house_.house.page.folderToOpen(0), house_.house.tree.path(u"drives/c/in/cam"));
}

} // namespace
} // namespace velmora::test
