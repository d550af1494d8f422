// The storage folder: its check and what follows from it, and the effects of typing into its box.
#include "cameras/StorageFolder.h"

#include "cameras/CamerasFixture.h"

#include <QDir>

namespace velmora {
namespace {

using test::CamerasFixture;

class StorageFolderTest : public CamerasFixture
{
protected:
    StorageFolderTest()
    {
        QObject::connect(&storage, &StorageFolder::checked, &storage,
                         [this](const StorageState &state) { checks.append(state); });
        QObject::connect(&storage, &StorageFolder::textChanged, &storage,
                         [this](const QString &text) { texts.append(text); });
        QObject::connect(&storage, &StorageFolder::told, &storage,
                         [this](const QString &text) { told.append(text); });
        QObject::connect(&storage, &StorageFolder::editBegan, &storage, [this] { ++editsBegun; });
    }

    void makeStorage() const { tree.makeFolder(u"drives/c/in"); }

    void removeStorage() const { ASSERT_TRUE(QDir().rmdir(tree.path(u"drives/c/in"))); }

    QList<StorageState> checks;
    QStringList texts;
    QStringList told;
    int editsBegun = 0;
};

const StorageState kPresent{LampColour::Green, true, false, QStringLiteral("Ok")};
const StorageState kMissing{LampColour::Red, false, true, QStringLiteral("Quitter")};

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
    EXPECT_EQ(storage.lamp(), LampColour::None);
    EXPECT_TRUE(checks.isEmpty());
}

TEST_F(StorageFolderTest, IsGreenWhenTheFolderIsThere)
{
    makeStorage();
    storage.load();
    storage.testSA();
    EXPECT_EQ(checks, QList<StorageState>{kPresent});
    EXPECT_EQ(storage.lamp(), LampColour::Green);
    EXPECT_TRUE(storage.isPresent());
}

TEST_F(StorageFolderTest, IsRedWhenTheFolderIsMissing)
{
    storage.load();
    storage.testSA();
    EXPECT_EQ(checks, QList<StorageState>{kMissing});
    EXPECT_EQ(storage.lamp(), LampColour::Red);
    EXPECT_FALSE(storage.isPresent());
}

TEST_F(StorageFolderTest, IsRedWhenAFileStandsThere)
{
    tree.write(u"drives/c/in", "");
    storage.load();
    storage.testSA();
    EXPECT_EQ(storage.lamp(), LampColour::Red);
}

TEST_F(StorageFolderTest, IsRedOnADriveThatDoesNotExist)
{
    storage.edit(QStringLiteral("Z:\\in"));
    storage.putInForce();
    EXPECT_EQ(storage.lamp(), LampColour::Red);
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
    EXPECT_EQ(storage.lamp(), LampColour::Red);
    storage.edit(QStringLiteral("C:\\in\\"));
    EXPECT_EQ(setting(u"Control", u"StRep"), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(storage.lamp(), LampColour::Green);
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
    EXPECT_EQ(storage.lamp(), LampColour::Green);
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
    EXPECT_EQ(storage.lamp(), LampColour::Red);
    storage.recheck();
    EXPECT_EQ(checks.size(), 2);
    makeStorage();
    storage.recheck();
    EXPECT_EQ(checks.size(), 3);
    EXPECT_EQ(storage.lamp(), LampColour::Green);
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
    EXPECT_EQ(storage.lamp(), LampColour::Green);
    EXPECT_TRUE(storage.isBeingEdited());
}

class FolderInForce : public StorageFolderTest
{
protected:
    FolderInForce()
    {
        makeStorage();
        tree.makeFolder(u"drives/c/other");
        storage.load();
        storage.testSA();
        storage.beginEdit();
    }

    [[nodiscard]] bool isInForce(const QString &text) const { return storage.inForce() == text; }

    StorageFolder next{table, paths, log, problems}; // that of the next start
    const QString kBefore = QStringLiteral("C:\\in\\");
    const QString kOther = QStringLiteral("C:\\other\\");
};

TEST_F(FolderInForce, StaysWhileAnotherIsTyped)
{
    storage.edit(QStringLiteral("C:\\other"));
    EXPECT_EQ(storage.text(), kOther);
    EXPECT_EQ(setting(u"Control", u"StRep"), kOther);
    EXPECT_EQ(storage.lamp(), LampColour::Green);
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_EQ(storage.folderText(u"\\a\\"), QStringLiteral("C:\\in\\\\a\\"));
    EXPECT_FALSE(storage.isUsable());
    EXPECT_TRUE(storage.gate().isShut());
}

TEST_F(FolderInForce, IsTheTextOfABoxThatWasLeft)
{
    storage.edit(QStringLiteral("C:\\other"));
    storage.putInForce();
    EXPECT_TRUE(isInForce(kOther));
    EXPECT_TRUE(storage.isUsable());
    EXPECT_FALSE(storage.gate().isShut());
}

TEST_F(FolderInForce, IsAChosenFolderAtOnce)
{
    EXPECT_TRUE(storage.choose(tree.path(u"drives/c/other")));
    EXPECT_TRUE(isInForce(kOther));
    EXPECT_TRUE(storage.isUsable());
    EXPECT_FALSE(storage.isBeingEdited());
}

TEST_F(FolderInForce, IsAMadeFolderAtOnce)
{
    storage.edit(QStringLiteral("C:\\new"));
    storage.MakeDir_Click();
    EXPECT_TRUE(isInForce(QStringLiteral("C:\\new\\")));
    EXPECT_TRUE(storage.isUsable());
    EXPECT_EQ(told, QStringList{QStringLiteral("The storage folder C:\\new\\ was made")});
}

TEST_F(FolderInForce, WaitsBehindAnotherWindowWithAChangedText)
{
    storage.edit(QStringLiteral("C:\\other"));
    storage.setAside();
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_TRUE(storage.isBeingEdited());
}

TEST_F(FolderInForce, IsUsedAgainBehindAnotherWindowWithAnUnchangedText)
{
    storage.edit(QStringLiteral("C:\\other"));
    storage.edit(QStringLiteral("C:\\in"));
    storage.setAside();
    EXPECT_FALSE(storage.isBeingEdited());
    EXPECT_TRUE(storage.isUsable());
}

TEST_F(FolderInForce, IsGivenBackByAnEmptiedBox)
{
    storage.edit(QString());
    EXPECT_EQ(storage.text(), QStringLiteral("\\"));
    storage.setAside();
    EXPECT_TRUE(storage.isBeingEdited());
    storage.putInForce();
    EXPECT_TRUE(isInForce(kBefore));
    EXPECT_EQ(storage.text(), kBefore);
    EXPECT_EQ(setting(u"Control", u"StRep"), kBefore);
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told.first().contains(QStringLiteral("stays C:\\in\\")));
}

TEST_F(FolderInForce, IsGivenBackByTheNextStartAfterAKillWithAnEmptiedBox)
{
    storage.edit(QString());
    ASSERT_EQ(setting(u"Control", u"StRep"), QStringLiteral("\\"));
    next.load();
    EXPECT_TRUE(next.inForce() == kBefore && next.text() == kBefore);
    EXPECT_EQ(setting(u"Control", u"StRep"), kBefore);
    EXPECT_EQ(setting(u"Velmora", u"StorageBefore"), QString());
}

TEST_F(FolderInForce, IsTheTypedOneForTheNextStartAfterAKillInTheMiddleOfATextThatBeganEmpty)
{
    storage.edit(QString());
    storage.edit(QStringLiteral("C:\\ot"));
    next.load();
    EXPECT_EQ(next.inForce(), QStringLiteral("C:\\ot\\"));
    EXPECT_EQ(setting(u"Velmora", u"StorageBefore"), QString());
}

TEST_F(FolderInForce, IsTheRootForTheNextStartWhenThatWasChosen)
{
    storage.edit(QString());
    ASSERT_TRUE(storage.choose(QStringLiteral("/")));
    next.load();
    EXPECT_EQ(next.inForce(), QStringLiteral("\\"));
}

TEST_F(FolderInForce, StaysWhenALetterIsTypedIntoAnEmptiedBoxAndTakenOutAgain)
{
    const QString before = storage.inForce();
    storage.edit(QString());
    storage.edit(QStringLiteral("\\x"));
    storage.edit(QStringLiteral("\\\\"));
    storage.putInForce();
    EXPECT_TRUE(isInForce(before));
}

TEST_F(FolderInForce, HasAnotherVersionForWhateverBeganBefore)
{
    storage.putInForce();
    const StorageUse use(storage);
    EXPECT_TRUE(use.mayGoOn());
    storage.testSA();
    storage.MakeDir_Click();
    EXPECT_TRUE(use.mayGoOn()) << "the same folder is in force";
    storage.beginEdit();
    EXPECT_FALSE(use.mayGoOn());
    storage.putInForce();
    EXPECT_FALSE(use.mayGoOn());
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
    EXPECT_EQ(storage.lamp(), LampColour::Green);
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
    EXPECT_EQ(storage.lamp(), LampColour::Green);
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

} // namespace
} // namespace velmora
