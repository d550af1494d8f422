// The address box of a row: what triggers the live view, what stores an address, and which folder
// is made.
#include "cameras/CamerasFixture.h"
#include "support/TypedAddress.h"
#include "view/CameraPage.h"

#include <QDir>

namespace velmora {
namespace {

using test::CamerasFixture;
using test::typeAddress;

class SourceTest : public CamerasFixture
{
protected:
    SourceTest()
    {
        QObject::connect(
            &page, &CameraPage::liveViewWanted, &page,
            [this](CameraAddress camera, const QString &url) {
                wanted.append(
                    QStringLiteral("%1:%2 %3").arg(camera.group).arg(camera.row).arg(url));
            });
    }

    void leave(int row, const QString &text) { typeAddress(page, row, text); }

    CameraPage page{table, storage, log, problems};
    QStringList wanted;
};

TEST_F(SourceTest, ShowsAnAddressThatIsTyped)
{
    page.Selecteur_Click(2, WindowState::Visible);
    page.changeSource(3, QStringLiteral("a"));
    page.changeSource(3, QStringLiteral("ab"));
    EXPECT_EQ(wanted, (QStringList{QStringLiteral("2:3 a"), QStringLiteral("2:3 ab")}));
    EXPECT_EQ(page.currentRow(), 3);
}

TEST_F(SourceTest, ShowsAnAddressOnceUntilItChanges)
{
    page.changeSource(3, QStringLiteral("a"));
    page.changeSource(4, QStringLiteral("a"));
    EXPECT_EQ(wanted, QStringList{QStringLiteral("0:3 a")});
    EXPECT_EQ(page.currentRow(), 4);
}

TEST_F(SourceTest, StoresNothingWhileItIsTyped)
{
    page.changeSource(3, QStringLiteral("a"));
    page.clickSource(3, QStringLiteral("a"));
    EXPECT_FALSE(tree.exists(u"Velmora.ini"));
}

TEST_F(SourceTest, IgnoresTheChangesOfATabSwitch)
{
    store("[Liste1]\r\nlst0=a\r\n");
    QObject::connect(&page, &CameraPage::pageLoaded, &page,
                     [this] { page.changeSource(5, page.row(0).url); });
    page.Selecteur_Click(1, WindowState::Visible);
    EXPECT_EQ(wanted, QStringList());
    EXPECT_EQ(page.currentRow(), 0);
    EXPECT_EQ(page.row(5).url, QString());
}

TEST_F(SourceTest, ShowsAnAddressAtEveryClick)
{
    page.clickSource(6, QStringLiteral("a"));
    page.clickSource(6, QStringLiteral("a"));
    EXPECT_EQ(wanted, (QStringList{QStringLiteral("0:6 a"), QStringLiteral("0:6 a")}));
    EXPECT_EQ(page.currentRow(), 6);
}

TEST_F(SourceTest, ShowsNothingOnAClickIntoAnEmptyRow)
{
    page.clickSource(6, QString());
    EXPECT_EQ(wanted, QStringList());
    EXPECT_EQ(page.currentRow(), 6);
}

TEST_F(SourceTest, StoresTheAddressWhenTheBoxIsLeft)
{
    page.Selecteur_Click(2, WindowState::Visible);
    leave(3, QStringLiteral("http://10.0.0.5/a.jpg"));
    EXPECT_EQ(setting(u"Liste2", u"lst3"), QStringLiteral("http://10.0.0.5/a.jpg"));
    EXPECT_EQ(page.row(3).url, QStringLiteral("http://10.0.0.5/a.jpg"));
    EXPECT_EQ(shown, QStringList());
}

TEST_F(SourceTest, TakesOverTheWholeRowThatAnotherProgramHasChanged)
{
    store("[Liste0]\r\nlst0=old\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    QList<int> told;
    QObject::connect(&page, &CameraPage::addressStored, &page,
                     [&told](CameraAddress camera) { told.append(camera.row); });
    store("[Liste0]\r\nlst0=new\r\n[Groupe0]\r\nEffM0=1\r\n[Camera00]\r\nName=Gate\r\n");
    page.leaveSource(0, QStringLiteral("old"));
    EXPECT_EQ(page.row(0).url, QStringLiteral("new"));
    EXPECT_TRUE(page.row(0).deleteOld);
    EXPECT_EQ(page.title(0), QStringLiteral("0:0 Gate"));
    EXPECT_EQ(told, QList<int>{0});
}

// The boxes of other rows may hold what could not be stored.
TEST_F(SourceTest, TakesOverNoOtherRow)
{
    store("[Liste0]\r\nlst0=old\r\nlst3=b\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    QList<int> reread;
    QObject::connect(&page, &CameraPage::rowReread, &page,
                     [&reread](int row) { reread.append(row); });
    QObject::connect(&page, &CameraPage::pageReread, &page, [&reread] { reread.append(-1); });
    store("[Liste0]\r\nlst0=new\r\nlst3=c\r\n");
    page.leaveSource(0, QStringLiteral("old"));
    EXPECT_EQ(reread, QList<int>{0});
    EXPECT_EQ(page.row(3).url, QStringLiteral("b"));
}

TEST_F(SourceTest, TakesABlankAroundAStoredAddressForNoOtherCamera)
{
    store("[Liste0]\r\nlst0=\"old \"\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    int reread = 0;
    QObject::connect(&page, &CameraPage::rowReread, &page, [&reread] { ++reread; });
    page.leaveSource(0, QStringLiteral("old "));
    EXPECT_EQ(reread, 0);
    EXPECT_EQ(page.row(0).url, QStringLiteral("old "));
}

TEST_F(SourceTest, MakesTheFolderOfTheAddressBeforeTheEdit)
{
    useStorage();
    store("[Liste0]\r\nlst0=old\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    leave(0, QStringLiteral("new"));
    EXPECT_EQ(tree.folders(u"drives/c/in"), QStringList{QStringLiteral("old")});
    leave(0, QStringLiteral("new"));
    EXPECT_EQ(tree.folders(u"drives/c/in"),
              (QStringList{QStringLiteral("new"), QStringLiteral("old")}));
}

TEST_F(SourceTest, MakesTheStorageFolderItselfForARowThatHadNoAddress)
{
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    leave(0, QStringLiteral("new"));
    EXPECT_EQ(tree.folders(u"drives/c"), QStringList{QStringLiteral("in")});
    EXPECT_EQ(tree.folders(u"drives/c/in"), QStringList());
}

TEST_F(SourceTest, MakesNoStorageFolderThatWasThereAndIsAway)
{
    useStorage();
    tree.makeFolder(u"drives/c/in/cam");
    ASSERT_TRUE(QDir(tree.path(u"drives/c")).rename(QStringLiteral("in"), QStringLiteral("away")));
    storage.recheck();
    ASSERT_TRUE(storage.isAway());
    leave(0, QStringLiteral("new"));
    EXPECT_EQ(tree.folders(u"drives/c"), QStringList{QStringLiteral("away")});
    EXPECT_EQ(setting(u"Liste0", u"lst0"), QStringLiteral("new"));
}

TEST_F(SourceTest, MakesOneLevelOfFolderAlone)
{
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    settings.write(u"Liste0", u"lst0", u"old");
    leave(0, QStringLiteral("new"));
    EXPECT_EQ(tree.folders(u"drives/c"), QStringList());
    EXPECT_EQ(shown.size(), 1);
    EXPECT_EQ(setting(u"Liste0", u"lst0"), QStringLiteral("new"));
}

TEST_F(SourceTest, MakesNoFolderForAnAddressThatIsCleared)
{
    useStorage();
    store("[Liste0]\r\nlst0=old\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    leave(0, QString());
    EXPECT_EQ(tree.folders(u"drives/c/in"), QStringList());
    EXPECT_EQ(setting(u"Liste0", u"lst0"), QString());
}

TEST_F(SourceTest, TurnsAClearedRowRedAtTheNextTabSwitch)
{
    store("[Liste0]\r\nlst0=old\r\n[Groupe0]\r\nSB0=65280\r\nlNew0=4\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    leave(0, QString());
    EXPECT_EQ(page.row(0).lamp, LampColour::Green);
    page.Selecteur_Click(0, WindowState::Visible);
    EXPECT_EQ(page.row(0).lamp, LampColour::Red);
    EXPECT_EQ(setting(u"Groupe0", u"lNew0"), QStringLiteral("0"));
}

TEST_F(SourceTest, TellsOfAFolderThatCannotBeMadeAndStoresTheAddress)
{
    tree.write(u"drives/c/in/old", "a file in the way");
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    settings.write(u"Liste0", u"lst0", u"old");
    leave(0, QStringLiteral("new"));
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().startsWith(QStringLiteral("The folder of row 0 cannot be made: ")));
    EXPECT_EQ(setting(u"Liste0", u"lst0"), QStringLiteral("new"));
}

TEST_F(SourceTest, Stores254CharactersSilently)
{
    const QString url(254, u'a');
    leave(0, url);
    EXPECT_EQ(setting(u"Liste0", u"lst0"), url);
    EXPECT_EQ(shown, QStringList());
}

TEST_F(SourceTest, Stores255CharactersAndSaysThatTheLastIsLost)
{
    leave(0, QString(255, u'a'));
    EXPECT_EQ(stored(), "[Liste0]\r\nlst0=" + QByteArray(255, 'a') + "\r\n");
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().contains(QStringLiteral("254 characters")));
}

TEST_F(SourceTest, Refuses256CharactersAndKeepsTheOldAddress)
{
    useStorage();
    settings.write(u"Liste0", u"lst0", u"old");
    leave(0, QString(256, u'a'));
    EXPECT_EQ(setting(u"Liste0", u"lst0"), QStringLiteral("old"));
    EXPECT_EQ(tree.folders(u"drives/c/in"), QStringList());
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().startsWith(QStringLiteral("Overflow: ")));
    EXPECT_FALSE(shown.first().contains(QString(256, u'a')));
}

TEST_F(SourceTest, SaysThatTheFileCannotHoldACharacter)
{
    leave(0, QStringLiteral("http://10.0.0.5/\u4e2d.jpg"));
    EXPECT_EQ(shown.size(), 1);
    EXPECT_EQ(setting(u"Liste0", u"lst0"), QStringLiteral("http://10.0.0.5/?.jpg"));
}

TEST_F(SourceTest, OpensTheFolderOfTheStoredAddressWhileTheLampIsGreen)
{
    useStorage();
    settings.write(u"Liste0", u"lst3", u"a1");
    EXPECT_EQ(page.folderToOpen(3), tree.path(u"drives/c/in/a%31"));
}

TEST_F(SourceTest, OpensNoFolderWhileTheLampIsRed)
{
    storage.edit(QStringLiteral("C:\\in"));
    storage.putInForce();
    settings.write(u"Liste0", u"lst3", u"a1");
    EXPECT_EQ(page.folderToOpen(3), QString());
}

TEST_F(SourceTest, OpensTheStorageFolderForARowWithoutAddress)
{
    useStorage();
    EXPECT_EQ(page.folderToOpen(3), tree.path(u"drives/c/in"));
}

TEST_F(SourceTest, TheBlanksAroundAnAddressGo)
{
    leave(2, QStringLiteral(" \thttp://cam/a b.png  "));
    EXPECT_EQ(table.url({0, 2}), QStringLiteral("http://cam/a b.png"));
    EXPECT_TRUE(tree.read(u"Velmora.ini").contains("lst2=http://cam/a b.png\r\n"));
    EXPECT_EQ(page.row(2).url, QStringLiteral("http://cam/a b.png"));
}

TEST_F(SourceTest, SaysOnceWhatIsWrongWithAText)
{
    int told = 0;
    QObject::connect(&problems, &Problems::warned, &page, [&told] { ++told; });
    for (const QString &text : {QString(300, u'x'), QStringLiteral("http://h/\u0436.jpg")}) {
        told = 0;
        leave(2, text);
        leave(2, text);
        EXPECT_EQ(told, 1) << text.toStdString();
        leave(2, QStringLiteral("a"));
        leave(2, text);
        EXPECT_EQ(told, 2) << text.toStdString();
    }
    told = 0;
    leave(3, QString(300, u'x'));
    EXPECT_EQ(told, 1);
}

} // namespace

class AddedMeanwhile : public SourceTest
{
protected:
    /// Another program puts a camera with a name and a login into row 0:3, and says so.
    void add()
    {
        settings.write(u"Liste0", u"lst3", u"http://added/");
        settings.write(u"Camera03", u"Name", u"Garage");
        settings.write(u"Camera03", u"Keep", u"differing");
        settings.write(u"Camera03", u"User", u"me");
        page.reread();
    }

    [[nodiscard]] QString address() const { return setting(u"Liste0", u"lst3"); }
};

TEST_F(AddedMeanwhile, ItsChoicesGoWithItsAddressWhenAnotherIsTyped)
{
    page.changeSource(3, QStringLiteral("http://typed/"));
    add();
    page.changeSource(3, QStringLiteral("http://typed/a"));
    leave(3, QStringLiteral("http://typed/a"));
    EXPECT_EQ(address(), QStringLiteral("http://typed/a"));
    for (const QStringView key : {u"Name", u"Keep", u"User"}) {
        EXPECT_EQ(setting(u"Camera03", key), QString());
    }
}

/// A camera in row 0:3 for which everything was chosen.
class ChosenFor : public SourceTest
{
protected:
    ChosenFor()
    {
        store("[Liste0]\r\nlst3=http://me@cam/a.jpg\r\n[Camera03]\r\nName=Garage\r\n"
              "Keep=differing\r\nUser=me\r\nPassword=secret\r\n[Health]\r\nNever03=1\r\n");
        page.Selecteur_Click(0, WindowState::Visible);
    }

    [[nodiscard]] QString chosen(QStringView key) const { return setting(u"Camera03", key); }
};

TEST_F(ChosenFor, GoesWhenTheRowIsEmptied)
{
    page.changeSource(3, QString());
    leave(3, QString());
    for (const QStringView key : {u"Name", u"Keep", u"User", u"Password"}) {
        EXPECT_EQ(chosen(key), QString());
    }
    EXPECT_EQ(setting(u"Health", u"Never03"), QString());
    leave(3, QStringLiteral("http://cam/a.jpg"));
    EXPECT_EQ(chosen(u"User"), QString());
}

TEST_F(ChosenFor, StaysWithAnotherAddressOfTheSameServer)
{
    leave(3, QStringLiteral("http://CAM:80/b?c=http://other/"));
    EXPECT_EQ(chosen(u"Name"), QStringLiteral("Garage"));
    EXPECT_EQ(chosen(u"User"), QStringLiteral("me"));
    EXPECT_EQ(chosen(u"Password"), QStringLiteral("secret"));
}

TEST_F(ChosenFor, TheLoginAloneGoesWithTheServer)
{
    leave(3, QStringLiteral("http://other/a.jpg"));
    EXPECT_EQ(setting(u"Liste0", u"lst3"), QStringLiteral("http://other/a.jpg"));
    EXPECT_EQ(chosen(u"User"), QString());
    EXPECT_EQ(chosen(u"Password"), QString());
    EXPECT_EQ(chosen(u"Name"), QStringLiteral("Garage"));
    EXPECT_EQ(chosen(u"Keep"), QStringLiteral("differing"));
    EXPECT_EQ(setting(u"Health", u"Never03"), QStringLiteral("1"));
}

TEST_F(ChosenFor, IsForgottenInAnotherGroupToo)
{
    page.Selecteur_Click(5, WindowState::Visible);
    page.storeElsewhere({0, 3}, QStringLiteral("http://other/a.jpg"));
    EXPECT_EQ(chosen(u"User"), QString());
    page.storeElsewhere({0, 3}, QString());
    EXPECT_EQ(chosen(u"Name"), QString());
}

TEST_F(SourceTest, EmptyingARowLeavesAllOtherLinesAsTheyAre)
{
    store("[Liste0]\r\nlst3=old\r\n[Camera04]\r\nName=Gate\r\n");
    page.Selecteur_Click(0, WindowState::Visible);
    const QByteArray before = stored();
    leave(3, QString());
    EXPECT_EQ(stored(), QByteArray(before).replace("lst3=old", "lst3="));
}

TEST_F(AddedMeanwhile, ItStaysWhenWhatWasTypedIsTakenBack)
{
    page.changeSource(3, QStringLiteral("x"));
    page.changeSource(3, QString());
    add();
    leave(3, QString());
    EXPECT_EQ(address(), QStringLiteral("http://added/"));
    EXPECT_EQ(page.row(3).url, QStringLiteral("http://added/"));
    EXPECT_EQ(setting(u"Camera03", u"Name"), QStringLiteral("Garage"));
}

TEST_F(AddedMeanwhile, ItsChoicesStayWhenItsAddressIsTypedAfterwards)
{
    page.changeSource(3, QString()); // as a row does that was filled
    add();
    page.changeSource(3, QStringLiteral("http://moved/"));
    leave(3, QStringLiteral("http://moved/"));
    EXPECT_EQ(address(), QStringLiteral("http://moved/"));
    EXPECT_EQ(setting(u"Camera03", u"Name"), QStringLiteral("Garage"));
}

} // namespace velmora
