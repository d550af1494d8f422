// The import's window under mouse and keys.
#include "ImportHouse.h"
#include "TurnedWheel.h"
#include "support/RefusedCalls.h"
#include "support/TypedAddress.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const QString kKept = QStringLiteral("20061005_1230450000.jpg");

class ImportWindow : public testing::Test
{
protected:
    ImportHouse house_;
};

TEST_F(ImportWindow, OpensOnTheStoredFolderWithItsFilesAndPictures)
{
    house_.put(QStringLiteral("b.jpg"));
    house_.put(QStringLiteral("a.jpg"));
    house_.put(QStringLiteral("c.png"));
    house_.house.putImage(ImportHouse::kCamera, kKept, pictureBytes(Qt::blue));
    house_.open();
    EXPECT_EQ(house_.rows("Dir1").join(u'|'), QStringLiteral("C:\\|card|DCIM"));
    EXPECT_EQ(house_.find<QListView>("Dir1").currentIndex().row(), 1);
    EXPECT_EQ(house_.rows("File1").join(u'|'), QStringLiteral("a.jpg|b.jpg"));
    EXPECT_EQ(house_.find<QListView>("File1").currentIndex().row(), 0);
    EXPECT_EQ(house_.text("NbF"), QStringLiteral(" 2"));
    EXPECT_EQ(house_.shown("iSource"), QStringLiteral("a.jpg"));
    EXPECT_EQ(house_.find<PictureView>("iTarget").accessibleDescription(),
              house_.house.tree.path(house_.house.folder(ImportHouse::kCamera)) + u'/' + kKept);
    EXPECT_TRUE(house_.find<QAbstractButton>("cmdGo").isEnabled());
}

TEST_F(ImportWindow, AButtonThatIsOffSaysWhy)
{
    house_.open();
    auto &button = house_.find<QAbstractButton>("cmdGo");
    EXPECT_EQ(button.toolTip(), QStringLiteral("Copy files"));
    EXPECT_EQ(house_.text("lStatus"), QString());
    house_.pick("Lien", 4);
    EXPECT_FALSE(button.isEnabled());
    EXPECT_TRUE(button.toolTip().startsWith(u"Camera 0:4 has no address"));
    EXPECT_EQ(house_.text("lStatus"), button.toolTip());
    typeAddress(house_.house.page, 4, QStringLiteral("http://cam/4.jpg"));
    EXPECT_TRUE(button.isEnabled());
    EXPECT_EQ(house_.text("lStatus"), QString());
}

TEST_F(ImportWindow, AnAbortedCopyIsFollowedByItsReason)
{
    house_.house.settings.write(u"Control", u"Patern", QStringLiteral("*"));
    house_.house.tree.write(QString(QStringLiteral("drives/c/card/") + QString(255, u'n')), "text");
    house_.open();
    house_.click("cmdGo");
    house_.settle();
    EXPECT_EQ(house_.message()->text(), QStringLiteral("Copy aborted"));
    EXPECT_EQ(house_.text("lStatus"), QStringLiteral("Copy aborted: ") + QString(255, u'n') +
                                          QStringLiteral(": File name too long"));
    house_.pick("Lien", 0);
    EXPECT_EQ(house_.text("lStatus"), QString());
}

TEST_F(ImportWindow, AListThatIsNotWholeSaysSo)
{
    house_.put(QStringLiteral("a.jpg"));
    const QString why =
        QStringLiteral("the folder could not be read to its end: Input/output error");
    {
        const RefusedCall failing(Call::ReadFolder, EIO);
        house_.open();
    }
    EXPECT_EQ(house_.text("lStatus"), why);
    auto &filter = house_.find<QLineEdit>("Filtre");
    filter.selectAll();
    QTest::keyClicks(&filter, QStringLiteral("*.jp*"));
    house_.settle();
    EXPECT_EQ(house_.text("lStatus"), QString());
    EXPECT_EQ(house_.rows("File1").join(u'|'), QStringLiteral("a.jpg"));
}

TEST_F(ImportWindow, AClickOnAFileShowsItsPicture)
{
    house_.put(QStringLiteral("a.jpg"));
    house_.put(QStringLiteral("b.jpg"));
    house_.open();
    house_.clickRow("File1", 1);
    EXPECT_EQ(house_.shown("iSource"), QStringLiteral("b.jpg"));
    house_.key("File1", Qt::Key_Up);
    EXPECT_EQ(house_.shown("iSource"), QStringLiteral("a.jpg"));
}

TEST_F(ImportWindow, AFileThatIsNoPictureShowsNone)
{
    house_.house.tree.write(u"drives/c/card/a.jpg", "text");
    house_.open();
    EXPECT_EQ(house_.shown("iSource"), QString());
}

TEST_F(ImportWindow, AClickLooksAtAFileAgainThatWasNotWholeYet)
{
    house_.house.tree.write(u"drives/c/card/a.jpg", "half");
    house_.open();
    ASSERT_EQ(house_.shown("iSource"), QString());
    house_.put(QStringLiteral("a.jpg"));
    house_.clickRow("File1", 0);
    EXPECT_EQ(house_.shown("iSource"), QStringLiteral("a.jpg"));
    ASSERT_TRUE(QFile::remove(house_.house.tree.path(u"drives/c/card/a.jpg")));
    house_.clickRow("File1", 0);
    EXPECT_EQ(house_.shown("iSource"), QString());
}

TEST_F(ImportWindow, ACameraChosenOnceMoreIsLookedAtAgain)
{
    house_.house.putImage(ImportHouse::kCamera, kKept, "half");
    house_.open();
    ASSERT_EQ(house_.shown("iTarget"), QString());
    house_.house.putImage(ImportHouse::kCamera, kKept, pictureBytes(Qt::blue));
    house_.pick("Lien", 0);
    EXPECT_EQ(house_.shown("iTarget"), kKept);
}

TEST_F(ImportWindow, ADoubleClickOpensAFolderAndASingleOneDoesNot)
{
    house_.open();
    house_.clickRow("Dir1", 2);
    EXPECT_EQ(house_.stored(u"Dir"), QStringLiteral("C:\\card"));
    house_.doubleClickRow("Dir1", 2);
    EXPECT_EQ(house_.stored(u"Dir"), QStringLiteral("C:\\card\\DCIM"));
    EXPECT_EQ(house_.rows("Dir1").join(u'|'), QStringLiteral("C:\\|card|DCIM"));
    EXPECT_EQ(house_.find<QListView>("Dir1").currentIndex().row(), 2);
}

TEST_F(ImportWindow, TheWheelTurnsOnlyTheChoiceThatHasTheFocus)
{
    house_.open();
    for (const char *const name : {"Cam", "Lien"}) {
        auto &box = house_.find<QComboBox>(name);
        house_.find<QListView>("File1").setFocus();
        turnWheel(box);
        EXPECT_FALSE(box.hasFocus());
        EXPECT_EQ(box.currentIndex(), 0);
        box.setFocus();
        turnWheel(box);
        EXPECT_EQ(box.currentIndex(), 1);
    }
    EXPECT_EQ(house_.stored(u"ICam"), QStringLiteral("1"));
}

TEST_F(ImportWindow, EnterOpensTheFolderToo)
{
    house_.open();
    house_.key("Dir1", Qt::Key_Up);
    house_.key("Dir1", Qt::Key_Return);
    EXPECT_EQ(house_.stored(u"Dir"), QStringLiteral("C:\\"));
    EXPECT_EQ(house_.text("nRep"), QStringLiteral("C:\\"));
}

TEST_F(ImportWindow, ACamerasFolderIsKnownByItsAddress)
{
    house_.house.settings.write(u"Control", u"Dir", u"C:\\in");
    house_.open();
    const auto row =
        house_.rows("Dir1").indexOf(QStringLiteral("http%3A%2F%2Fcam%2F%30%2F%30%2Fpicture%2Ejpg"));
    ASSERT_GE(row, 0);
    house_.doubleClickRow("Dir1", static_cast<int>(row));
    EXPECT_EQ(house_.text("nRep"), QStringLiteral("http://cam/0/0/picture.jpg"));
}

TEST_F(ImportWindow, AnotherDriveIsOpenedAndStored)
{
    house_.house.tree.write(u"drives/e/photo.jpg", pictureBytes(Qt::green));
    house_.open();
    auto &drives = house_.find<QComboBox>("Drive1");
    EXPECT_EQ(drives.itemText(0), QStringLiteral("C:"));
    EXPECT_EQ(drives.itemText(1), QStringLiteral("E:"));
    house_.pick("Drive1", 1);
    EXPECT_EQ(house_.stored(u"Drive"), QStringLiteral("E:"));
    EXPECT_EQ(house_.rows("Dir1"), QStringList{QStringLiteral("E:\\")});
    EXPECT_EQ(house_.rows("File1"), QStringList{QStringLiteral("photo.jpg")});
    EXPECT_EQ(house_.shown("iSource"), QStringLiteral("photo.jpg"));
}

TEST_F(ImportWindow, ReopenedItOffersTheDrivesThatThereAreNow)
{
    house_.house.tree.makeFolder(u"drives/e");
    house_.open();
    auto &drives = house_.find<QComboBox>("Drive1");
    EXPECT_EQ(drives.itemText(1), QStringLiteral("E:"));
    house_.window.close();
    ASSERT_TRUE(
        QFile::rename(house_.house.tree.path(u"drives/e"), house_.house.tree.path(u"drives/f")));
    house_.open();
    EXPECT_EQ(drives.itemText(1), QStringLiteral("F:"));
}

TEST_F(ImportWindow, TheFilterIsStoredAndCountedKeyByKey)
{
    house_.put(QStringLiteral("a.jpg"));
    house_.put(QStringLiteral("b.png"));
    house_.open();
    auto &filter = house_.find<QLineEdit>("Filtre");
    QTest::mouseClick(&filter, Qt::LeftButton);
    QTest::keyClick(&filter, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&filter, QStringLiteral("*.p"));
    EXPECT_EQ(house_.stored(u"Patern"), QStringLiteral("*.p"));
    house_.settle();
    EXPECT_EQ(house_.text("NbF"), QStringLiteral("0"));
    EXPECT_EQ(house_.shown("iSource"), QString());
    QTest::keyClicks(&filter, QStringLiteral("ng"));
    house_.settle();
    EXPECT_EQ(house_.text("NbF"), QStringLiteral(" 1"));
    EXPECT_EQ(house_.rows("File1"), QStringList{QStringLiteral("b.png")});
    EXPECT_EQ(filter.text(), QStringLiteral("*.png"));
}

TEST_F(ImportWindow, OnlyACameraWithAnAddressCanBeCopiedTo)
{
    house_.house.putImage(ImportHouse::kCamera, kKept, pictureBytes(Qt::blue));
    house_.open();
    house_.pick("Lien", 3);
    EXPECT_EQ(house_.stored(u"ILien"), QStringLiteral("3"));
    EXPECT_FALSE(house_.find<QAbstractButton>("cmdGo").isEnabled());
    EXPECT_EQ(house_.shown("iTarget"), QString());
    house_.pick("Lien", 0);
    EXPECT_TRUE(house_.find<QAbstractButton>("cmdGo").isEnabled());
    EXPECT_EQ(house_.shown("iTarget"), kKept);
    house_.pick("Cam", 9);
    EXPECT_EQ(house_.stored(u"ICam"), QStringLiteral("9"));
    EXPECT_FALSE(house_.find<QAbstractButton>("cmdGo").isEnabled());
}

TEST_F(ImportWindow, CopySaysWhatItDidInAPlainBoxWithTheProgramsName)
{
    house_.put(kKept);
    house_.open();
    house_.click("cmdGo");
    const QMessageBox *const box = house_.message();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), QStringLiteral("1 file copied"));
    EXPECT_EQ(box->icon(), QMessageBox::Information);
    EXPECT_EQ(box->standardButtons(), QMessageBox::Ok);
    EXPECT_EQ(box->windowTitle(), QCoreApplication::applicationName());
    EXPECT_EQ(house_.text("ctr"), QStringLiteral("1"));
    EXPECT_EQ(house_.text("NbF"), QStringLiteral(" 1"));
    EXPECT_EQ(house_.find<QProgressBar>("Progress").value(), 1);
    EXPECT_EQ(house_.house.images(ImportHouse::kCamera), QStringList{kKept});
}

TEST_F(ImportWindow, ADoubleClickOnCopyCopiesOnce)
{
    house_.put(kKept);
    house_.open();
    auto &go = house_.find<QAbstractButton>("cmdGo");
    QTest::mouseClick(&go, Qt::LeftButton);
    EXPECT_FALSE(go.isEnabled());
    EXPECT_EQ(house_.text("ctr"), QStringLiteral("0"));
    QTest::mouseDClick(&go, Qt::LeftButton);
    QTest::mouseClick(&go, Qt::LeftButton);
    house_.settle();
    EXPECT_EQ(house_.house.images(ImportHouse::kCamera), QStringList{kKept});
    EXPECT_EQ(house_.window.findChildren<QMessageBox *>().size(), 1);
}

TEST_F(ImportWindow, APressOnCopyIsForTheCameraThatTheRowHadThen)
{
    house_.put(kKept);
    house_.open();
    auto &go = house_.find<QAbstractButton>("cmdGo");
    QTest::mousePress(&go, Qt::LeftButton);
    house_.house.addCamera(ImportHouse::kCamera, QStringLiteral("http://cam/other.jpg"));
    house_.house.tree.makeFolder(house_.house.folder(ImportHouse::kCamera));
    house_.import.noticeAddress(ImportHouse::kCamera);
    QTest::mouseRelease(&go, Qt::LeftButton);
    house_.settle();
    EXPECT_EQ(house_.house.images(ImportHouse::kCamera), QStringList());
    EXPECT_TRUE(house_.text("lStatus").contains(QStringLiteral("another address")));
    house_.click("cmdGo");
    EXPECT_EQ(house_.house.images(ImportHouse::kCamera), QStringList{kKept});
}

TEST_F(ImportWindow, APressOnCopyIsForTheStorageFolderOfThen)
{
    house_.put(kKept);
    house_.open();
    auto &go = house_.find<QAbstractButton>("cmdGo");
    QTest::mousePress(&go, Qt::LeftButton);
    house_.house.tree.makeFolder(u"drives/c/other");
    house_.house.storage.choose(house_.house.tree.path(u"drives/c/other"));
    const QDir target(house_.house.storage.cameraFolder(ImportHouse::kCamera));
    ASSERT_TRUE(target.mkpath(QStringLiteral(".")));
    house_.settle();
    QTest::mouseRelease(&go, Qt::LeftButton);
    house_.settle();
    EXPECT_EQ(target.entryList(QDir::Files), QStringList());
    EXPECT_EQ(house_.text("lStatus"),
              QStringLiteral("Copy aborted: another storage folder is in use now"));
    house_.click("cmdGo");
    EXPECT_EQ(target.entryList(QDir::Files), QStringList{kKept});
}

TEST_F(ImportWindow, WhileItCopiesTheChoicesAreOffAndTheKeysComeBack)
{
    house_.put(kKept);
    house_.open();
    auto &go = house_.find<QAbstractButton>("cmdGo");
    go.setFocus();
    QTest::keyClick(&go, Qt::Key_Space);
    for (const char *const name : {"Drive1", "Dir1", "Filtre", "Cam", "Lien", "cmdGo"}) {
        EXPECT_FALSE(house_.find<QWidget>(name).isEnabled()) << name;
    }
    EXPECT_TRUE(house_.find<QWidget>("cmdQuit").isEnabled());
    house_.settle();
    for (const char *const name : {"Drive1", "Dir1", "Filtre", "Cam", "Lien", "cmdGo"}) {
        EXPECT_TRUE(house_.find<QWidget>(name).isEnabled()) << name;
    }
    ASSERT_NE(house_.message(), nullptr);
    QTest::keyClick(house_.message(), Qt::Key_Return);
    EXPECT_EQ(house_.window.focusWidget(), &go);
}

TEST_F(ImportWindow, SpacePressedTwiceOnCopyDoesNotQuit)
{
    house_.put(kKept);
    house_.open();
    auto &go = house_.find<QAbstractButton>("cmdGo");
    go.setFocus();
    QTest::keyClick(&go, Qt::Key_Space);
    ASSERT_FALSE(go.isEnabled());
    QTest::keyClick(house_.window.focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(house_.window.isVisible());
    house_.settle();
    EXPECT_EQ(house_.house.images(ImportHouse::kCamera), QStringList{kKept});
    EXPECT_EQ(house_.window.focusWidget(), &go);
}

TEST_F(ImportWindow, TheKeysStayWhereTheyWereTakenDuringTheCopy)
{
    house_.put(kKept);
    house_.open();
    auto &go = house_.find<QAbstractButton>("cmdGo");
    go.setFocus();
    QTest::keyClick(&go, Qt::Key_Space);
    auto &files = house_.find<QWidget>("File1");
    ASSERT_NE(house_.window.focusWidget(), &files);
    files.setFocus();
    house_.settle();
    ASSERT_NE(house_.message(), nullptr);
    QTest::keyClick(house_.message(), Qt::Key_Return);
    EXPECT_EQ(house_.window.focusWidget(), &files);
}

class ImportTargetList : public ImportWindow, public testing::WithParamInterface<const char *>
{
};

TEST_P(ImportTargetList, GivesTheButtonBackAfterIdenticalTextsWhenTheSameIsChosenOnceMore)
{
    house_.house.settings.write(u"Control", u"StRep", u"C:\\in");
    house_.house.storage.load();
    house_.house.settings.write(u"Control", u"Dir",
                                u"C:\\in\\http%3A%2F%2Fcam%2F%30%2F%30%2Fpicture%2Ejpg");
    house_.open();
    house_.click("cmdGo");
    ASSERT_NE(house_.message(), nullptr);
    EXPECT_EQ(house_.message()->text(), QStringLiteral("Source and target are identical"));
    QTest::keyClick(house_.message(), Qt::Key_Return);
    house_.settle();
    EXPECT_FALSE(house_.find<QAbstractButton>("cmdGo").isEnabled());
    house_.pick(GetParam(), 0);
    EXPECT_TRUE(house_.find<QAbstractButton>("cmdGo").isEnabled());
}

INSTANTIATE_TEST_SUITE_P(Lists, ImportTargetList, testing::Values("Cam", "Lien"));

TEST_F(ImportWindow, QuitAndEscapeClose)
{
    house_.open();
    house_.click("cmdQuit");
    EXPECT_FALSE(house_.window.isVisible());
    EXPECT_TRUE(house_.house.logText().contains(QStringLiteral("frmImport cmdClik")));
    house_.open();
    QTest::keyClick(&house_.window, Qt::Key_Escape);
    EXPECT_FALSE(house_.window.isVisible());
    EXPECT_EQ(house_.house.logText().count(QStringLiteral("frmImport cmdClik")), 1);
    EXPECT_EQ(house_.house.logText().count(QStringLiteral("frmImport Form_Unload")), 2);
}

TEST_F(ImportWindow, ReopenedItLooksAgain)
{
    house_.open();
    house_.click("cmdQuit");
    house_.put(QStringLiteral("new.jpg"));
    house_.open();
    EXPECT_EQ(house_.rows("File1"), QStringList{QStringLiteral("new.jpg")});
    EXPECT_EQ(house_.shown("iSource"), QStringLiteral("new.jpg"));
}

TEST_F(ImportWindow, ReopenedItShowsNoProgressOfAFormerRun)
{
    house_.put(kKept);
    house_.open();
    house_.click("cmdGo");
    QTest::keyClick(house_.message(), Qt::Key_Return);
    ASSERT_EQ(house_.find<QProgressBar>("Progress").value(), 1);
    house_.click("cmdQuit");
    house_.open();
    EXPECT_EQ(house_.find<QProgressBar>("Progress").value(), 0);
    EXPECT_EQ(house_.text("ctr"), QStringLiteral("0"));
}

class ReopenedDuringARun : public ImportWindow
{
protected:
    ReopenedDuringARun()
    {
        const QByteArray large(qsizetype{48} << 20, 'x'); // so that events are handled within it
        house_.house.tree.write(QString(QStringLiteral("drives/c/card/") + kKept), large);
        house_.put(QStringLiteral("b.jpg"));
        house_.open();
        copy();
        const auto &bar = house_.find<QProgressBar>("Progress");
        isRunning_ = QTest::qWaitFor([&bar] { return bar.maximum() == 2; });
        QTest::mouseClick(&house_.find<QWidget>("cmdQuit"), Qt::LeftButton);
        house_.window.present();
        isRunning_ = isRunning_ && !house_.find<QWidget>("cmdGo").isEnabled();
        house_.settle();
    }

    void copy() { QTest::mouseClick(&house_.find<QWidget>("cmdGo"), Qt::LeftButton); }

    bool isRunning_ = false; // as the window was opened again
};

TEST_F(ReopenedDuringARun, ItKeepsItsOwnCount)
{
    ASSERT_TRUE(isRunning_);
    EXPECT_EQ(house_.house.images(ImportHouse::kCamera), QStringList{kKept});
    EXPECT_EQ(house_.text("ctr"), QStringLiteral("1"));
    EXPECT_EQ(house_.text("NbF"), QStringLiteral(" 2"));
}

TEST_F(ReopenedDuringARun, ItsNextRunLessensItsCount)
{
    QSet<QString> counts;
    QObject::connect(&house_.import, &Import::changed, &house_.window,
                     [&] { counts.insert(house_.text("NbF")); });
    copy();
    house_.settle();
    EXPECT_TRUE(counts.contains(QStringLiteral("1"))); // one of the two is there already
}

TEST_F(ImportWindow, OpenedDuringARunItSaysHowManyThatHasCopied)
{
    house_.put(kKept);
    const QByteArray large(qsizetype{48} << 20, 'x'); // so that events are handled within it
    house_.house.tree.write(u"drives/c/card/b.jpg", large);
    house_.open();
    QTest::mouseClick(&house_.find<QWidget>("cmdGo"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([this] { return house_.text("ctr") == QStringLiteral("1"); }));
    QTest::mouseClick(&house_.find<QWidget>("cmdQuit"), Qt::LeftButton);
    house_.window.present();
    ASSERT_FALSE(house_.find<QWidget>("cmdGo").isEnabled());
    EXPECT_EQ(house_.text("ctr"), QStringLiteral("1"));
    house_.settle();
}

TEST_F(ImportWindow, TheFilePressedIsMeantThoughTheListIsReadAgainBeforeTheRelease)
{
    house_.put(QStringLiteral("b.jpg"));
    house_.put(QStringLiteral("c.jpg"));
    house_.open();
    auto &list = house_.find<QListView>("File1");
    const QPoint second = list.visualRect(list.model()->index(1, 0)).center();
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, second);
    house_.put(QStringLiteral("a.jpg"));
    house_.import.setFilter(QStringLiteral("*.jpg"));
    house_.settle();
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, second);
    house_.settle();
    EXPECT_EQ(house_.shown("iSource"), QStringLiteral("c.jpg"));
}

} // namespace
} // namespace velmora::test
