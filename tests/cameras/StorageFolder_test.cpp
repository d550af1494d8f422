// The storage folder: its check and what follows from it, and the effects of typing into its box.
#include "cameras/StorageFolder.h"

#include "cameras/StorageFolderFixture.h"

#include <QDir>

namespace velmora {
namespace {

using test::CamerasFixture;
using test::StorageFolderTest;

const StorageState kPresent{StorageCheck::Found, true};
const StorageState kMissing{StorageCheck::Missing, false};

TEST(StorageState, FollowsFromTheFolder)
{
    EXPECT_EQ(storageState(true), kPresent);
    EXPECT_EQ(storageState(false), kMissing);
}

TEST_F(StorageFolderTest, TakesTheStoredText)
{
    store("[Control]\r\nStRep=C:\\pics\\\r\n");
    storage.load();
    EXPECT_EQ(storage.text(), QStringLiteral("C:\\pics\\"));
    EXPECT_EQ(texts, QStringList{QStringLiteral("C:\\pics\\")});
}

TEST_F(StorageFolderTest, TakesInOfDriveCWhenNothingIsStored)
{
    storage.load();
    EXPECT_EQ(storage.text(), QStringLiteral("C:\\in"));
    EXPECT_FALSE(tree.exists(u"Velmora.ini")) << "the default is not stored";
}

TEST_F(StorageFolderTest, ChecksNothingWhenLoaded)
{
    storage.load();
    EXPECT_EQ(storage.lastCheck(), StorageCheck::NotYet);
    EXPECT_TRUE(checks.isEmpty());
}

TEST_F(StorageFolderTest, IsGreenWhenTheFolderIsThere)
{
    makeStorage();
    storage.load();
    storage.testSA();
    EXPECT_EQ(checks, QList<StorageState>{kPresent});
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
    EXPECT_TRUE(storage.isPresent());
}

TEST_F(StorageFolderTest, IsRedWhenTheFolderIsMissing)
{
    storage.load();
    storage.testSA();
    EXPECT_EQ(checks, QList<StorageState>{kMissing});
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Missing);
    EXPECT_FALSE(storage.isPresent());
}

TEST_F(StorageFolderTest, IsRedWhenAFileStandsThere)
{
    tree.write(u"drives/c/in", "");
    storage.load();
    storage.testSA();
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Missing);
}

TEST_F(StorageFolderTest, IsRedOnADriveThatDoesNotExist)
{
    storage.edit(QStringLiteral("Z:\\in"));
    storage.putInForce();
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Missing);
    EXPECT_FALSE(storage.isPresent());
    EXPECT_EQ(storage.native(storage.text()), QString());
}

TEST_F(StorageFolderTest, ShowsTheCleanedTextOnACheck)
{
    store("[Control]\r\nStRep= D:\\My Pics \r\n");
    storage.load();
    storage.testSA();
    EXPECT_EQ(storage.text(), QStringLiteral("D:\\MyPics\\"));
    EXPECT_EQ(texts.last(), QStringLiteral("D:\\MyPics\\"));
}

TEST_F(StorageFolderTest, CreatesNothingOnACheck)
{
    storage.load();
    storage.testSA();
    EXPECT_EQ(tree.folders(u"drives/c"), QStringList());
}

TEST_F(StorageFolderTest, LogsACheck)
{
    log.setOn(true);
    storage.testSA();
    EXPECT_EQ(tree.read(u"Velmora.log"), QByteArray("14:05:09 Interface TestSA\n"));
}

TEST_F(StorageFolderTest, StoresTheTextAtEveryKeystroke)
{
    makeStorage();
    storage.edit(QStringLiteral("C:\\i"));
    EXPECT_EQ(setting(u"Control", u"StRep"), QStringLiteral("C:\\i\\"));
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Missing);
    storage.edit(QStringLiteral("C:\\in\\"));
    EXPECT_EQ(setting(u"Control", u"StRep"), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
    EXPECT_EQ(checks.size(), 2);
}

TEST_F(StorageFolderTest, TakesASlashOfTheUserForABackslash)
{
    storage.edit(QStringLiteral("C:/in/cam"));
    EXPECT_EQ(storage.text(), QStringLiteral("C:\\in\\cam\\"));
}

TEST_F(StorageFolderTest, GivesTheNativePathOfACameraFolder)
{
    makeStorage();
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    const QString text = storage.folderText(u"\\a%31\\");
    EXPECT_EQ(text, QStringLiteral("C:\\in\\\\a%31\\"));
    EXPECT_EQ(storage.native(text), tree.path(u"drives/c/in/a%31"));
}

TEST_F(StorageFolderTest, StopsTheTimersWhileItIsEdited)
{
    makeStorage();
    storage.load();
    storage.testSA();
    EXPECT_FALSE(storage.isBeingEdited());
    storage.beginEdit();
    EXPECT_TRUE(storage.isBeingEdited());
    EXPECT_EQ(editsBegun, 1);
    storage.edit(QStringLiteral("C:\\in"));
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
    EXPECT_TRUE(storage.isBeingEdited()) << "the box still has the focus";
}

TEST_F(StorageFolderTest, LetsTheTimersRunWhenTheBoxIsLeftAndTheFolderIsThere)
{
    makeStorage();
    storage.load();
    storage.beginEdit();
    storage.putInForce();
    EXPECT_FALSE(storage.isBeingEdited());
    EXPECT_EQ(checks, QList<StorageState>{kPresent});
}

TEST_F(StorageFolderTest, KeepsTheTimersStoppedWhenTheBoxIsLeftAndTheFolderIsMissing)
{
    storage.load();
    storage.beginEdit();
    storage.putInForce();
    EXPECT_FALSE(storage.isBeingEdited());
    EXPECT_FALSE(storage.isUsable());
}

TEST_F(StorageFolderTest, RechecksOnlyWhenTheFolderCameOrWent)
{
    makeStorage();
    storage.load();
    storage.testSA();
    storage.recheck();
    EXPECT_EQ(checks.size(), 1);
    removeStorage();
    storage.recheck();
    EXPECT_EQ(checks.size(), 2);
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Missing);
    storage.recheck();
    EXPECT_EQ(checks.size(), 2);
    makeStorage();
    storage.recheck();
    EXPECT_EQ(checks.size(), 3);
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
}

TEST_F(StorageFolderTest, LetsTheTimersRunWhenTheFolderComesBackAfterAnEdit)
{
    storage.load();
    storage.beginEdit();
    storage.putInForce();
    makeStorage();
    storage.recheck();
    EXPECT_FALSE(storage.isBeingEdited());
}

TEST_F(StorageFolderTest, KeepsTheTimersStoppedWhenTheFolderComesWhileItIsEdited)
{
    storage.load();
    storage.testSA();
    storage.beginEdit();
    makeStorage();
    storage.recheck();
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
    EXPECT_TRUE(storage.isBeingEdited());
}

class MissingFolder : public CamerasFixture
{
protected:
    StoragePlace make() { return storage.makeForUse(); }

    [[nodiscard]] bool isThere() const { return tree.exists(u"drives/c/in"); }
};

TEST_F(MissingFolder, IsMadeWhenNothingWasEverCaptured)
{
    storage.load();
    storage.testSA();
    EXPECT_EQ(make(), StoragePlace::Made);
    EXPECT_TRUE(isThere());
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
    EXPECT_EQ(make(), StoragePlace::There);
}

TEST_F(MissingFolder, IsNotMadeWhereImagesMayHaveBeenStored)
{
    store("[Groupe3]\r\nLocalTime7=07/03/2006 14:05:09\r\n");
    storage.load();
    storage.testSA();
    EXPECT_EQ(make(), StoragePlace::Away);
    EXPECT_FALSE(isThere());
    EXPECT_TRUE(storage.isAway());
}

// The images are still on its disk.
TEST_F(MissingFolder, IsNotMadeOnceTheCameraOfItsImagesIsRemoved)
{
    store("[Groupe3]\r\nLocalTime7=07/03/2006 14:05:09\r\n");
    storage.load();
    storage.testSA();
    store("[Groupe3]\r\n");
    EXPECT_EQ(make(), StoragePlace::Away);
    storage.testSA();
    EXPECT_EQ(make(), StoragePlace::Away);
    EXPECT_FALSE(isThere());
}

TEST_F(MissingFolder, IsMadeThereTooWhenTheUserHasJustNamedIt)
{
    store("[Control]\r\nStRep=C:\\old\r\n[Groupe3]\r\nLocalTime7=07/03/2006 14:05:09\r\n");
    storage.load();
    storage.testSA();
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    EXPECT_EQ(make(), StoragePlace::Made);
}

TEST_F(MissingFolder, IsNotMadeOnceItWasThere)
{
    useStorage();
    ASSERT_TRUE(QDir().rmdir(tree.path(u"drives/c/in")));
    EXPECT_EQ(make(), StoragePlace::Away);
    EXPECT_FALSE(isThere());
}

TEST_F(StorageFolderTest, RemembersThatACheckWasAskedFor)
{
    EXPECT_FALSE(storage.isCheckRequested());
    storage.requestCheck();
    EXPECT_TRUE(storage.isCheckRequested());
    storage.testSA();
    EXPECT_FALSE(storage.isCheckRequested());
}

TEST_F(StorageFolderTest, TakesAChosenFolder)
{
    makeStorage();
    storage.choose(tree.path(u"drives/c/in"));
    EXPECT_EQ(storage.text(), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(setting(u"Control", u"StRep"), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
    EXPECT_EQ(shown, QStringList());
}

TEST_F(StorageFolderTest, RefusesAChosenFolderThatCleaningWouldChange)
{
    for (const char16_t *const name : {u"my pics", u"a*b", u"a\\b", u"a|b"}) {
        SCOPED_TRACE(QString::fromUtf16(name).toStdString());
        const QString folder = tree.path(u"drives/c") + u'/' + QString::fromUtf16(name);
        shown.clear();
        storage.choose(folder);
        ASSERT_EQ(shown.size(), 1);
        EXPECT_TRUE(shown.first().contains(folder));
        EXPECT_EQ(storage.text(), QString());
        EXPECT_FALSE(tree.exists(u"Velmora.ini"));
    }
}

TEST_F(StorageFolderTest, RefusesAChosenFolderThatTheSettingsCannotHold)
{
    for (const QString &name :
         {QStringLiteral("日本"), QString(250, u'a') + u'/' + QString(100, u'b'),
          QStringLiteral("a\nb")}) {
        SCOPED_TRACE(name.toStdString());
        const QString folder = tree.path(u"drives/c") + u'/' + name;
        shown.clear();
        EXPECT_FALSE(storage.choose(folder));
        ASSERT_EQ(shown.size(), 1);
        EXPECT_TRUE(shown.first().contains(folder));
        EXPECT_FALSE(tree.exists(u"Velmora.ini"));
    }
}

TEST_F(StorageFolderTest, IsReadByOthersAsItIsUsed)
{
    store("[Control]\r\nStRep=C:\\my in\r\n");
    EXPECT_EQ(storedStorage(settings.snapshot()), QStringLiteral("C:\\myin\\"));
    storage.load();
    EXPECT_EQ(storage.text(), QStringLiteral("C:\\my in")) << "until it is checked";
}

} // namespace
} // namespace velmora
