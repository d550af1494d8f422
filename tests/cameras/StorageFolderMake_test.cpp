// The make-folder button: every level of the storage folder, a folder for each camera, and a
// message for what cannot be made.
#include "cameras/CamerasFixture.h"
#include "cameras/StorageFolder.h"

namespace velmora {
namespace {

using test::CamerasFixture;

class MakeDir : public CamerasFixture
{
protected:
    /// The text is in the box and the button is clicked.
    void make(const QString &text)
    {
        storage.edit(text);
        storage.MakeDir_Click();
    }
};

TEST_F(MakeDir, MakesTheFolderAndOneForEachCamera)
{
    store("[Liste0]\r\nlst0=a1\r\nlst9=b\r\n[Liste9]\r\nlst4=c.d\r\n");
    make(QStringLiteral("C:\\in"));
    EXPECT_EQ(tree.folders(u"drives/c/in"),
              (QStringList{QStringLiteral("a%31"), QStringLiteral("b"), QStringLiteral("c%2Ed")}));
    EXPECT_EQ(shown, QStringList());
}

TEST_F(MakeDir, MakesEveryLevel)
{
    make(QStringLiteral("C:\\a\\b\\c"));
    EXPECT_EQ(tree.folders(u"drives/c/a/b"), QStringList{QStringLiteral("c")});
}

TEST_F(MakeDir, LeavesWhatIsThereAlone)
{
    store("[Liste0]\r\nlst0=cam\r\n");
    tree.write(u"drives/c/in/cam/20060307_1405090714.jpg", "x");
    make(QStringLiteral("C:\\in"));
    EXPECT_EQ(tree.read(u"drives/c/in/cam/20060307_1405090714.jpg"), QByteArray("x"));
    EXPECT_EQ(shown, QStringList());
}

TEST_F(MakeDir, ChecksAndStoresTheText)
{
    make(QStringLiteral("C:\\in"));
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
    EXPECT_EQ(storage.text(), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(setting(u"Control", u"StRep"), QStringLiteral("C:\\in\\"));
}

TEST_F(MakeDir, ShowsThePathWithoutItsLastSeparatorBeforeTheCheck)
{
    storage.edit(QStringLiteral("C:\\in"));
    QStringList texts;
    QObject::connect(&storage, &StorageFolder::textChanged, &storage,
                     [&texts](const QString &text) { texts.append(text); });
    storage.MakeDir_Click();
    EXPECT_EQ(texts, (QStringList{QStringLiteral("C:\\in\\"), QStringLiteral("C:\\in"),
                                  QStringLiteral("C:\\in\\")}));
}

TEST_F(MakeDir, CleansATextThatWasNotCheckedYet)
{
    store("[Control]\r\nStRep= C:\\my*in\\deep er\r\n");
    storage.load();
    storage.MakeDir_Click();
    EXPECT_EQ(tree.folders(u"drives/c/myin"), QStringList{QStringLiteral("deeper")});
    EXPECT_EQ(storage.text(), QStringLiteral("C:\\myin\\deeper\\"));
}

TEST_F(MakeDir, LetsTheTimersRunAgain)
{
    storage.edit(QStringLiteral("C:\\in"));
    storage.beginEdit();
    storage.MakeDir_Click();
    EXPECT_FALSE(storage.isBeingEdited());
}

TEST_F(MakeDir, SaysThatItWasDone)
{
    int made = 0;
    QObject::connect(&storage, &StorageFolder::folderMade, &storage, [&made] { ++made; });
    make(QStringLiteral("C:\\in"));
    EXPECT_EQ(made, 1);
}

TEST_F(MakeDir, LogsTheClick)
{
    storage.edit(QStringLiteral("C:\\in"));
    log.setOn(true);
    storage.MakeDir_Click();
    EXPECT_EQ(tree.read(u"Velmora.log"),
              QByteArray("14:05:09 Interface MkDir\n14:05:09 Interface TestSA\n"));
}

TEST_F(MakeDir, TellsOfADriveThatDoesNotExist)
{
    store("[Liste0]\r\nlst0=cam\r\n");
    make(QStringLiteral("Z:\\in"));
    EXPECT_EQ(shown, QStringList{QStringLiteral(
                         "The folder Z:\\in\\ cannot be made: there is no such drive")});
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Missing);
}

TEST_F(MakeDir, TellsOfAFileInTheWay)
{
    tree.write(u"drives/c/in", "x");
    make(QStringLiteral("C:\\in"));
    const QString reason =
        QString::fromStdString(std::make_error_code(std::errc::file_exists).message());
    EXPECT_EQ(shown, QStringList{QStringLiteral("The folder C:\\in\\ cannot be made: ") + reason});
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Missing);
}

TEST_F(MakeDir, TellsOfACameraFolderWithoutItsAddressAndMakesTheOthers)
{
    store("[Liste0]\r\nlst0=user:secret\r\nlst1=next\r\n");
    tree.write(u"drives/c/in/user%3Asecret", "x");
    make(QStringLiteral("C:\\in"));
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(
        shown.first().startsWith(QStringLiteral("The folder of camera 0:0 cannot be made: ")));
    EXPECT_FALSE(shown.first().contains(QStringLiteral("secret")));
    EXPECT_EQ(tree.folders(u"drives/c/in"), QStringList{QStringLiteral("next")});
}

TEST_F(MakeDir, TellsEachTimeItIsClicked)
{
    make(QStringLiteral("Z:\\in"));
    storage.MakeDir_Click();
    EXPECT_EQ(shown.size(), 2);
}

TEST_F(MakeDir, MakesAFolderFromTheRootOfTheFileSystem)
{
    const QString text = QString(tree.path(u"srv/cams")).replace(u'/', u'\\');
    make(text);
    EXPECT_EQ(tree.folders(u"srv"), QStringList{QStringLiteral("cams")});
    EXPECT_EQ(storage.lastCheck(), StorageCheck::Found);
}

} // namespace
} // namespace velmora
