// The import's source: what is loaded, what is stored at once, what is counted and shown.
#include "ImportTest.h"

#include <QAbstractItemModelTester>

#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {
namespace {

TEST_F(ImportTest, OpensOnTheStoredChoices)
{
    put(QStringLiteral("a.gif"));
    put(QStringLiteral("b.jpg"));
    store(u"Patern", QStringLiteral("*.gif"));
    store(u"ICam", QStringLiteral("3"));
    store(u"ILien", QStringLiteral("7"));
    load();
    EXPECT_EQ(face().Filtre, QStringLiteral("*.gif"));
    EXPECT_EQ(import_.folders().path(), QStringLiteral("C:\\card"));
    EXPECT_EQ(listed(), QStringList{QStringLiteral("a.gif")});
    EXPECT_EQ(face().Cam, 3);
    EXPECT_EQ(face().Lien, 7);
    EXPECT_EQ(face().NbF, QStringLiteral(" 1"));
}

TEST_F(ImportTest, WithoutAnyItOpensOnTheFirstDriveAndJpegs)
{
    store(u"Dir", QString());
    load();
    EXPECT_EQ(face().Filtre, QStringLiteral("*.jpg"));
    EXPECT_EQ(face().drive, 0);
    EXPECT_EQ(import_.folders().path(), QStringLiteral("C:\\"));
    EXPECT_EQ(face().Cam, 0);
    EXPECT_EQ(face().Lien, 0);
    EXPECT_EQ(face().NbF, QStringLiteral("0"));
    EXPECT_EQ(face().ctr, QStringLiteral("0"));
}

TEST_F(ImportTest, LoadingStoresNothing)
{
    const QByteArray before = house_.tree.read(u"Velmora.ini");
    load();
    EXPECT_EQ(house_.tree.read(u"Velmora.ini"), before);
}

TEST_F(ImportTest, AStoredDriveIsTakenWhateverItsCaseAndLabel)
{
    house_.tree.makeFolder(u"drives/e");
    store(u"Dir", QString());
    store(u"Drive", QStringLiteral("e: [CARD]"));
    load();
    EXPECT_EQ(face().drives.at(face().drive), QStringLiteral("E:"));
    EXPECT_EQ(import_.folders().path(), QStringLiteral("E:\\"));
}

TEST_F(ImportTest, ADriveThatIsGoneLeavesTheFirstAndTheFolderStillCounts)
{
    store(u"Drive", QStringLiteral("X:"));
    load();
    EXPECT_EQ(face().drive, 0);
    EXPECT_EQ(import_.folders().path(), QStringLiteral("C:\\card"));
}

TEST_F(ImportTest, AFolderThatIsGoneLeavesTheDrivesRoot)
{
    for (const QString &folder : {QStringLiteral("C:\\gone"), QStringLiteral("X:\\card"),
                                  QStringLiteral("\\no\\such\\folder")}) {
        store(u"Dir", folder);
        load();
        EXPECT_EQ(import_.folders().path(), QStringLiteral("C:\\")) << folder.toStdString();
    }
}

TEST_F(ImportTest, StoredPositionsOutsideTheListsAreTheFirst)
{
    for (const QString &text : {QStringLiteral("10"), QStringLiteral("-1"), QStringLiteral("x"),
                                QStringLiteral("99999")}) {
        store(u"ICam", text);
        store(u"ILien", text);
        load();
        EXPECT_EQ(face().Cam, 0) << text.toStdString();
        EXPECT_EQ(face().Lien, 0) << text.toStdString();
    }
}

TEST_F(ImportTest, AStoredPositionIsTheLeadingNumber)
{
    store(u"ICam", QStringLiteral("4 is mine"));
    load();
    EXPECT_EQ(face().Cam, 4);
}

TEST_F(ImportTest, ChoicesAreStoredAtOnce)
{
    house_.tree.makeFolder(u"drives/e/DCIM");
    load();
    import_.setFilter(QStringLiteral("*.p"));
    EXPECT_EQ(stored(u"Patern"), QStringLiteral("*.p"));
    import_.chooseDrive(1);
    EXPECT_EQ(stored(u"Drive"), QStringLiteral("E:"));
    EXPECT_EQ(stored(u"Dir"), QStringLiteral("E:\\"));
    finish();
    import_.openFolder(1);
    EXPECT_EQ(stored(u"Dir"), QStringLiteral("E:\\DCIM"));
    import_.chooseGroup(9);
    EXPECT_EQ(stored(u"ICam"), QStringLiteral("9"));
    import_.chooseCamera(8);
    EXPECT_EQ(stored(u"ILien"), QStringLiteral("8"));
}

TEST_F(ImportTest, PositionsThatAreNoneChangeNothing)
{
    load();
    const QByteArray before = house_.tree.read(u"Velmora.ini");
    import_.chooseDrive(-1);
    import_.chooseDrive(1000);
    import_.chooseGroup(-1);
    import_.chooseGroup(10);
    import_.chooseCamera(-1);
    import_.chooseCamera(10);
    import_.openFolder(-1);
    import_.openFolder(1000);
    EXPECT_EQ(house_.tree.read(u"Velmora.ini"), before);
    EXPECT_EQ(import_.folders().path(), QStringLiteral("C:\\card"));
}

TEST_F(ImportTest, AFolderShowsItsLevelsAndItsFolders)
{
    house_.tree.makeFolder(u"drives/c/card/b");
    house_.tree.makeFolder(u"drives/c/card/A");
    put(QStringLiteral("file.jpg"));
    ASSERT_TRUE(
        QFile::link(house_.tree.path(u"drives/c/in"), house_.tree.path(u"drives/c/card/toIn")));
    load();
    EXPECT_EQ(folders().join(u'|'), QStringLiteral("C:\\|card|A|b|toIn"));
}

TEST_F(ImportTest, FoldersThatPathTextCannotNameAreLeftOut)
{
    for (const QByteArray &name : {QByteArray("back\\slash"), QByteArray("no\xFFtext")}) {
        const QByteArray path = QFile::encodeName(house_.tree.path(u"drives/c/card/")) + '/' + name;
        ASSERT_EQ(::mkdir(path.constData(), 0755), 0);
    }
    load();
    EXPECT_EQ(folders().size(), 2);
    ::rmdir((QFile::encodeName(house_.tree.path(u"drives/c/card")) + "/no\xFFtext").constData());
}

TEST_F(ImportTest, TheOpenedFolderIsCountedAndLeadsBackUp)
{
    house_.tree.write(u"drives/c/card/sub/a.jpg", "x");
    load();
    EXPECT_EQ(face().NbF, QStringLiteral("0"));
    import_.openFolder(2);
    finish();
    EXPECT_EQ(import_.folders().path(), QStringLiteral("C:\\card\\sub"));
    EXPECT_EQ(face().NbF, QStringLiteral(" 1"));
    import_.openFolder(0);
    finish();
    EXPECT_EQ(import_.folders().path(), QStringLiteral("C:\\"));
    EXPECT_EQ(face().NbF, QStringLiteral("0"));
}

TEST_F(ImportTest, OpeningTheOpenFolderDoesNothing)
{
    load();
    store(u"Dir", QStringLiteral("untouched"));
    import_.openFolder(folders_.openRow());
    EXPECT_EQ(stored(u"Dir"), QStringLiteral("untouched"));
}

TEST_F(ImportTest, TheFolderOfACameraSaysWhichItIs)
{
    addCamera(kCamera);
    store(u"Dir", QStringLiteral("C:\\in\\http%3A%2F%2Fcam%2F%30%2F%30%2Fpicture%2Ejpg"));
    load();
    EXPECT_EQ(face().nRep, QStringLiteral("http://cam/0/0/picture.jpg"));
    import_.openFolder(0);
    EXPECT_EQ(face().nRep, QStringLiteral("C:\\"));
}

TEST_F(ImportTest, AFolderThatIsNoCamerasIsShownByItsName)
{
    house_.tree.makeFolder(u"drives/c/in/me@home;a=b");
    store(u"Dir", QStringLiteral("C:\\in\\me@home;a=b"));
    load();
    EXPECT_EQ(face().nRep, QStringLiteral("me@home;a=b"));
}

TEST_F(ImportTest, PasswordsOfACamerasAddressAreNotShown)
{
    house_.tree.makeFolder(u"drives/c/in/http%3A%2F%2Feva%3Asecret%40cam%2Fa");
    store(u"Dir", QStringLiteral("C:\\in\\http%3A%2F%2Feva%3Asecret%40cam%2Fa"));
    load();
    EXPECT_FALSE(face().nRep.contains(QStringLiteral("secret"))) << face().nRep.toStdString();
    EXPECT_TRUE(face().nRep.contains(QStringLiteral("cam/a")));
}

TEST_F(ImportTest, TheFilterIsAPatternOfFileNames)
{
    for (const QString &name : {QStringLiteral("IMG_1.JPG"), QStringLiteral("b.jpg"),
                                QStringLiteral("c.jpeg"), QStringLiteral("noDot")}) {
        put(name);
    }
    load();
    EXPECT_EQ(listed().join(u'|'), QStringLiteral("b.jpg|IMG_1.JPG"));
    const QList<std::pair<QString, QString>> counts{{QStringLiteral("*.jp*"), QStringLiteral(" 3")},
                                                    {QStringLiteral("*.*"), QStringLiteral(" 4")},
                                                    {QString(), QStringLiteral(" 4")},
                                                    {QStringLiteral("?.jpg"), QStringLiteral(" 1")},
                                                    {QStringLiteral("*.gif"), QStringLiteral("0")}};
    for (const auto &[filter, count] : counts) {
        import_.setFilter(filter);
        finish();
        EXPECT_EQ(face().NbF, count) << filter.toStdString();
        EXPECT_EQ(face().NbF.trimmed().toInt(), listed().size());
    }
}

TEST_F(ImportTest, AFilterTypedQuicklyCountsOnlyTheLast)
{
    put(QStringLiteral("a.jpg"));
    put(QStringLiteral("a.gif"));
    load();
    import_.setFilter(QStringLiteral("*.jp"));
    import_.setFilter(QStringLiteral("*.gif"));
    finish();
    EXPECT_EQ(listed(), QStringList{QStringLiteral("a.gif")});
    EXPECT_EQ(face().NbF, QStringLiteral(" 1"));
}

TEST_F(ImportTest, TheFirstFileIsSelectedAndShown)
{
    put(QStringLiteral("b.jpg"));
    put(QStringLiteral("A.jpg"));
    load();
    EXPECT_EQ(files_.ListIndex(), 0);
    EXPECT_EQ(face().iSource, house_.tree.path(u"drives/c/card/A.jpg"));
}

TEST_F(ImportTest, ASelectedFileIsShownAndStaysSelected)
{
    put(QStringLiteral("a.jpg"));
    put(QStringLiteral("c.jpg"));
    load();
    import_.chooseFile(1);
    EXPECT_EQ(face().iSource, house_.tree.path(u"drives/c/card/c.jpg"));
    put(QStringLiteral("b.jpg"));
    import_.setFilter(QStringLiteral("?.jpg"));
    finish();
    EXPECT_EQ(files_.ListIndex(), 2);
    EXPECT_EQ(face().iSource, house_.tree.path(u"drives/c/card/c.jpg"));
}

TEST_F(ImportTest, WithoutFilesThereIsNoPicture)
{
    put(QStringLiteral("a.jpg"));
    load();
    import_.setFilter(QStringLiteral("*.gif"));
    finish();
    EXPECT_EQ(files_.ListIndex(), -1);
    EXPECT_EQ(face().iSource, QString());
}

TEST_F(ImportTest, ListsBehaveAsListsShould)
{
    const QAbstractItemModelTester tester(&files_,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    put(QStringLiteral("a.jpg"));
    put(QStringLiteral("two\nlines.jpg"));
    load();
    EXPECT_EQ(listed().join(u'|'), QStringLiteral("a.jpg|two lines.jpg"));
    import_.setFilter(QStringLiteral("*.gif"));
    finish();
    EXPECT_EQ(listed(), QStringList());
}

TEST_F(ImportTest, AFullFolderIsReadInPiecesAndAnotherChoiceOvertakesIt)
{
    constexpr int kMany = 20'000;
    house_.tree.makeFolder(u"drives/c/full");
    const QByteArray root = QFile::encodeName(house_.tree.path(u"drives/c/full/"));
    for (int i = 0; i < kMany; ++i) {
        QFile file(QFile::decodeName(root) + QStringLiteral("/%1.jpg").arg(i));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    store(u"Dir", QStringLiteral("C:\\full"));
    import_.load();
    EXPECT_EQ(face().NbF, QStringLiteral("0")); // not read to its end at once
    finish();
    EXPECT_EQ(face().NbF, QStringLiteral(" 20000"));
    import_.setFilter(QStringLiteral("*.*"));
    import_.openFolder(0);
    finish();
    EXPECT_EQ(face().NbF, QStringLiteral("0"));
}

TEST_F(ImportTest, OpeningAndClosingAreLogged)
{
    load();
    import_.traceQuit();
    import_.close();
    import_.close();
    EXPECT_EQ(house_.logText().count(QStringLiteral("frmImport Form_Load\n")), 1);
    EXPECT_EQ(house_.logText().count(QStringLiteral("frmImport cmdClik\n")), 1);
    EXPECT_EQ(house_.logText().count(QStringLiteral("frmImport Form_Unload\n")), 1);
}

TEST_F(ImportTest, CannotCopyWhileTheStorageBoxIsEdited)
{
    addCamera(kCamera);
    load();
    ASSERT_TRUE(face().cmdGo);
    house_.storage.beginEdit();
    EXPECT_FALSE(face().cmdGo);
    house_.storage.putInForce();
    EXPECT_TRUE(face().cmdGo);
}

TEST_F(ImportTest, WaitsInTheMiddleOfARunWhileTheStorageBoxIsEdited)
{
    addCamera(kCamera);
    put(kKept);
    load();
    import_.go();
    house_.storage.beginEdit();
    clock_.advance(std::chrono::minutes{1});
    EXPECT_EQ(house_.images(kCamera), QStringList());
    EXPECT_TRUE(face().running);
    house_.storage.putInForce();
    finish();
    EXPECT_EQ(house_.images(kCamera), QStringList{kKept});
}

TEST_F(ImportTest, EndsARunThatWasMeantForAnotherStorageFolder)
{
    addCamera(kCamera);
    put(kKept);
    load();
    import_.go();
    house_.tree.makeFolder(u"drives/c/other");
    house_.storage.edit(QStringLiteral("C:\\other"));
    house_.storage.putInForce();
    finish();
    EXPECT_EQ(house_.images(kCamera), QStringList());
    EXPECT_EQ(house_.tree.folders(u"drives/c/other"), QStringList());
    EXPECT_EQ(messages_, QStringList{QStringLiteral("Copy aborted")});
    EXPECT_EQ(face().failure, QStringLiteral("another storage folder is in use now"));
    EXPECT_TRUE(face().cmdGo);
}

/// A run of which the storage folder is another for a while.
class ImportBetweenFolders : public ImportTest
{
protected:
    ImportBetweenFolders()
    {
        addCamera(kCamera);
        put(kKept);
        house_.tree.makeFolder(u"drives/c/other");
        load();
        import_.go();
        use(QStringLiteral("C:\\other"));
    }

    void use(const QString &folder)
    {
        house_.storage.edit(folder);
        house_.storage.putInForce();
    }

    void expectReason()
    {
        finish();
        EXPECT_FALSE(face().running);
        EXPECT_EQ(house_.images(kCamera), QStringList());
        EXPECT_EQ(messages_, QStringList{QStringLiteral("Copy aborted")});
        EXPECT_EQ(face().failure, QStringLiteral("another storage folder is in use now"));
        EXPECT_TRUE(face().cmdGo);
    }
};

TEST_F(ImportBetweenFolders, EndsWithItsReasonWhenTheFormerOneIsBackAtOnce)
{
    use(QStringLiteral("C:\\in"));
    expectReason();
}

TEST_F(ImportBetweenFolders, KeepsItsReasonWhenTheFormerOneIsBackLater)
{
    finish();
    use(QStringLiteral("C:\\in"));
    expectReason();
}

TEST_F(ImportBetweenFolders, EndsWithItsReasonWhenTheWindowOpensAgainMeanwhile)
{
    import_.close();
    import_.load();
    expectReason();
}

TEST_F(ImportBetweenFolders, EndsWithItsReasonWhenACameraIsChosenMeanwhile)
{
    import_.chooseCamera(kCamera.row);
    expectReason();
}

} // namespace
} // namespace velmora::test
