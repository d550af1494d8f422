// The import's target and its runs: when the button is enabled, what is said at the end, and how a
// run changes the captions.
#include "ImportTest.h"
#include "support/TypedAddress.h"

#include <QDir>

namespace velmora::test {
namespace {

class ImportTarget : public ImportTest
{
protected:
    ImportTarget()
    {
        addCamera(kCamera);
        QObject::connect(&import_, &Import::imagesAdded, &import_, [this] { ++refreshes_; });
    }

    // The storage folder as typed, without "\" at its end.
    void useUncleanedStorage()
    {
        store(u"StRep", QStringLiteral("C:\\in"));
        house_.storage.load();
        store(u"Dir", QStringLiteral("C:\\in") + folderName());
    }

    static QString folderName()
    {
        return QStringLiteral("\\http%3A%2F%2Fcam%2F%30%2F%30%2Fpicture%2Ejpg");
    }

    [[nodiscard]] QString picture(const QString &name) const
    {
        return house_.tree.path(house_.folder(kCamera)) + u'/' + name;
    }

    int refreshes_ = 0;
};

TEST_F(ImportTarget, ACameraWithAnAddressCanBeCopiedTo)
{
    load();
    EXPECT_TRUE(face().cmdGo);
    import_.chooseCamera(1);
    EXPECT_FALSE(face().cmdGo);
    import_.chooseCamera(0);
    EXPECT_TRUE(face().cmdGo);
    import_.chooseGroup(1);
    EXPECT_FALSE(face().cmdGo);
}

TEST_F(ImportTarget, ACameraWithoutAddressSaysWhyNothingCanBeCopied)
{
    load();
    EXPECT_EQ(face().whyNot, QString());
    import_.chooseCamera(1);
    EXPECT_TRUE(face().whyNot.startsWith(u"Camera 0:1 has no address"));
}

TEST_F(ImportTarget, AnAddressGivenMeanwhileIsNoticed)
{
    QObject::connect(&house_.page, &CameraPage::addressStored, &import_, &Import::noticeAddress);
    load();
    import_.chooseCamera(1);
    typeAddress(house_.page, 2, QStringLiteral("http://cam/2.jpg"));
    EXPECT_FALSE(face().cmdGo);
    typeAddress(house_.page, 1, QStringLiteral("http://cam/1.jpg"));
    EXPECT_TRUE(face().cmdGo);
    EXPECT_EQ(face().whyNot, QString());
    typeAddress(house_.page, 1, QString());
    EXPECT_FALSE(face().cmdGo);
}

TEST_F(ImportTarget, TheFirstStoredImageIsShown)
{
    house_.putImage(kCamera, QStringLiteral("20061005_1230450002.jpg"));
    house_.putImage(kCamera, QStringLiteral("20061005_1230450001.gif"));
    for (const char16_t digit : {u'5', u'3', u'4'}) { // folders keep them in any order
        house_.putImage(kCamera, QStringLiteral("20061005_123045000%1.jpg").arg(QChar(digit)));
    }
    house_.putImage(kCamera, QStringLiteral("20061005_123045.jpg"));     // the older form
    house_.putImage(kCamera, QStringLiteral("10061005_12304500011jpg")); // no dot there
    house_.putImage(kCamera, QStringLiteral("00061005-1230450001.jpg"));
    load();
    EXPECT_EQ(face().iTarget, picture(QStringLiteral("20061005_1230450001.gif")));
}

TEST_F(ImportTarget, ANameWithoutDotMatchesTheShapeToo)
{
    house_.putImage(kCamera, QStringLiteral("20061005_1230450001"));
    load();
    EXPECT_EQ(face().iTarget, picture(QStringLiteral("20061005_1230450001")));
}

TEST_F(ImportTarget, WithoutAnAddressTheStorageFolderItselfIsLookedAt)
{
    house_.tree.write(u"drives/c/in/20061005_1230450001.jpg", "picture");
    load();
    EXPECT_EQ(face().iTarget, QString());
    import_.chooseCamera(1);
    finish();
    EXPECT_EQ(face().iTarget, house_.tree.path(u"drives/c/in/20061005_1230450001.jpg"));
    EXPECT_FALSE(face().cmdGo);
}

TEST_F(ImportTarget, AnotherCameraClearsThePicture)
{
    house_.putImage(kCamera, QStringLiteral("20061005_1230450001.jpg"));
    addCamera({0, 1});
    load();
    EXPECT_NE(face().iTarget, QString());
    import_.chooseCamera(1);
    EXPECT_EQ(face().iTarget, QString());
    finish();
    EXPECT_EQ(face().iTarget, QString());
    import_.chooseCamera(0);
    finish();
    EXPECT_EQ(face().iTarget, picture(QStringLiteral("20061005_1230450001.jpg")));
}

TEST_F(ImportTarget, OneFileIsSaidInTheSingularAndSoIsNone)
{
    load();
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("0 file copied")});
    put(kKept);
    go();
    EXPECT_EQ(messages_.last(), QStringLiteral("1 file copied"));
    EXPECT_EQ(house_.images(kCamera), QStringList{kKept});
    EXPECT_EQ(face().ctr, QStringLiteral("1"));
}

TEST_F(ImportTarget, SeveralAreSaidInThePlural)
{
    put(QStringLiteral("a.jpg"));
    put(QStringLiteral("b.jpg"));
    load();
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("2 files copied")});
    EXPECT_EQ(face().ctr, QStringLiteral("2"));
    EXPECT_EQ(face().progress.files, 2);
    EXPECT_EQ(refreshes_, 1);
    EXPECT_TRUE(face().cmdGo);
}

TEST_F(ImportTarget, TheFilesAreCountedAgainAfterARun)
{
    put(kKept);
    load();
    put(QStringLiteral("b.jpg"));
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("2 files copied")});
    EXPECT_EQ(face().NbF, QStringLiteral(" 2"));
    EXPECT_EQ(files_.count(), 2);
}

TEST_F(ImportTarget, TheEndHasItsOrder)
{
    QStringList story;
    const auto note = [&](const QString &what) {
        story.append(what + face().NbF + (face().cmdGo ? QStringLiteral(" on") : QString()));
    };
    QObject::connect(&import_, &Import::messageWanted, &import_, note);
    QObject::connect(&import_, &Import::imagesAdded, &import_,
                     [&] { note(QStringLiteral("refresh")); });
    put(kKept);
    load();
    go();
    put(QString(255, u'n'));
    store(u"Patern", QStringLiteral("*"));
    load();
    go();
    EXPECT_EQ(story.join(u'|'), QStringLiteral("1 file copied1|refresh 1 on|"
                                               "Copy aborted1|refresh1 on"));
}

TEST_F(ImportTarget, TheEndNamesTheFolderThatWasFilledWhateverIsChosenMeanwhile)
{
    QStringList folders;
    QObject::connect(&import_, &Import::imagesAdded, &import_,
                     [&folders](const QString &folder) { folders.append(folder); });
    put(kKept);
    load();
    import_.go();
    import_.chooseCamera(1);
    finish();
    EXPECT_EQ(folders, QStringList{house_.storage.cameraFolder(kCamera)});
}

TEST_F(ImportTarget, TheButtonIsOffWhileARunRunsAndASecondPressDoesNothing)
{
    put(kKept);
    load();
    import_.go();
    EXPECT_FALSE(face().cmdGo);
    EXPECT_TRUE(face().running);
    EXPECT_EQ(face().ctr, QStringLiteral("0"));
    import_.go();
    import_.chooseCamera(0); // would enable the button
    EXPECT_FALSE(face().cmdGo);
    import_.go();
    finish();
    EXPECT_EQ(messages_.size(), 1);
    EXPECT_EQ(house_.images(kCamera), QStringList{kKept});
    EXPECT_TRUE(face().cmdGo);
    EXPECT_FALSE(face().running);
}

TEST_F(ImportTarget, ASecondRunBeginsWithNoneCopied)
{
    put(kKept);
    load();
    go();
    EXPECT_EQ(face().ctr, QStringLiteral("1"));
    import_.go();
    EXPECT_EQ(face().ctr, QStringLiteral("0"));
    EXPECT_EQ(face().progress, ImportProgress());
    finish();
}

TEST_F(ImportTarget, EqualTextsAreReportedAndTheButtonStaysOffUntilACameraIsChosen)
{
    useUncleanedStorage();
    house_.putImage(kCamera, kKept);
    load();
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("Source and target are identical")});
    EXPECT_FALSE(face().cmdGo);
    EXPECT_FALSE(face().running);
    EXPECT_EQ(refreshes_, 0);
    EXPECT_EQ(house_.images(kCamera), QStringList{kKept});
    import_.setFilter(QStringLiteral("*.*"));
    import_.openFolder(0);
    finish();
    EXPECT_FALSE(face().cmdGo);
    go();
    EXPECT_EQ(messages_.size(), 1);
    import_.chooseGroup(0);
    EXPECT_TRUE(face().cmdGo);
}

TEST_F(ImportTarget, ADoubledBackslashMakesTheTextsDifferAndTheCopyProceeds)
{
    store(u"Dir", QStringLiteral("C:\\in") + folderName());
    house_.putImage(kCamera, kKept);
    load();
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("1 file copied")});
    EXPECT_EQ(house_.images(kCamera),
              (QStringList{kKept, QStringLiteral("20061005_1230450001jpg")}));
}

TEST_F(ImportTarget, AnAbortedRunSaysSoAndGivesTheButtonBack)
{
    put(kKept, "first");
    put(QString(255, u'n'));
    store(u"Patern", QStringLiteral("*"));
    load();
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("Copy aborted")});
    EXPECT_TRUE(face().cmdGo);
    EXPECT_EQ(refreshes_, 1);
    EXPECT_EQ(house_.images(kCamera), QStringList{kKept});
    EXPECT_EQ(face().ctr, QStringLiteral("1"));
}

TEST_F(ImportTarget, WhileCopyingTheCountIsLessenedByTheCollisions)
{
    put(kKept);
    put(QString(255, u'n')); // ends the run, so that nothing is counted again
    house_.putImage(kCamera, kKept);
    house_.putImage(kCamera, QStringLiteral("20061005_1230450001jpg"));
    house_.putImage(kCamera, QStringLiteral("20061005_1230450002pg"));
    store(u"Patern", QStringLiteral("*"));
    load();
    EXPECT_EQ(face().NbF, QStringLiteral(" 2"));
    go();
    EXPECT_EQ(face().NbF, QStringLiteral("-1"));
}

TEST_F(ImportTarget, ARunThatBeginsBeforeTheFilesAreCountedBeginsWithItsOwnCount)
{
    constexpr int kMore = 6000; // with long names, few of which are read in a piece
    put(kKept);
    put(QString(255, u'3')); // ends the run before the others are copied
    for (int i = 0; i < kMore; ++i) {
        put(QStringLiteral("z%1").arg(i, 229, 10, QLatin1Char('z')));
    }
    house_.putImage(kCamera, kKept);
    store(u"Patern", QStringLiteral("*"));
    import_.load();
    ASSERT_EQ(face().NbF, QStringLiteral("0"));
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("Copy aborted")});
    EXPECT_EQ(face().NbF, QStringLiteral("6001"));
}

TEST_F(ImportTarget, TheCountThatIsLessenedIsTheOneThatWasShown)
{
    put(kKept);
    put(QString(255, u'n')); // ends the run, so that nothing is counted again
    store(u"Patern", QStringLiteral("*"));
    load();
    put(QStringLiteral("z.jpg"));
    go();
    EXPECT_EQ(face().NbF, QStringLiteral("2"));
}

TEST_F(ImportTarget, WithoutACopyTheCountStays)
{
    put(QString(255, u'n'));
    store(u"Patern", QStringLiteral("*"));
    load();
    go();
    EXPECT_EQ(face().NbF, QStringLiteral(" 1"));
    EXPECT_EQ(face().ctr, QStringLiteral("0"));
}

TEST_F(ImportTarget, ACameraThatLostItsAddressAbortsAndTurnsTheButtonOff)
{
    put(kKept);
    load();
    house_.table.setUrl(kCamera, u"");
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("Copy aborted")});
    EXPECT_FALSE(face().cmdGo);
    EXPECT_FALSE(house_.tree.exists(u"drives/c/in/20061005_1230450000.jpg"));
}

TEST_F(ImportTarget, AMissingCameraFolderAborts)
{
    put(kKept);
    load();
    ASSERT_TRUE(QFile::rename(house_.tree.path(house_.folder(kCamera)),
                              house_.tree.path(u"drives/c/away")));
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("Copy aborted")});
    EXPECT_EQ(face().failure, QStringLiteral("the camera's folder is not there"));
    EXPECT_TRUE(face().cmdGo);
}

TEST_F(ImportTarget, AStorageFolderThatVanishesIsTheReasonAndNotTheFile)
{
    put(kKept);
    load();
    import_.go();
    QDir(house_.tree.path(u"drives/c")).rename(QStringLiteral("in"), QStringLiteral("ni"));
    finish();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("Copy aborted")});
    EXPECT_EQ(face().failure, QStringLiteral("the storage folder C:\\in\\ is not there"));
}

TEST_F(ImportTarget, ARunKeepsToTheChoicesWithWhichItBegan)
{
    addCamera({0, 1});
    for (int i = 0; i < 200; ++i) {
        put(QStringLiteral("20061005_123045%1.jpg").arg(i, 4, 10, QLatin1Char('0')));
    }
    load();
    import_.go();
    import_.chooseCamera(1);
    import_.setFilter(QStringLiteral("*.gif"));
    import_.openFolder(0);
    finish();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("200 files copied")});
    EXPECT_EQ(house_.images(kCamera).size(), 200);
}

TEST_F(ImportTarget, ClosingStopsARunBehindAFileAndSaysNothing)
{
    constexpr int kFiles = 3000;
    for (int i = 0; i < kFiles; ++i) {
        put(QStringLiteral("20061005_123045%1.jpg").arg(i, 4, 10, QLatin1Char('0')), "whole");
    }
    load();
    QObject::connect(&import_, &Import::changed, &import_, [this] {
        if (face().progress.copied > 0) {
            import_.close();
        }
    });
    go();
    EXPECT_EQ(messages_, QStringList());
    EXPECT_FALSE(face().running);
    EXPECT_GT(house_.images(kCamera).size(), 0);
    EXPECT_LT(house_.images(kCamera).size(), kFiles / 2);
    EXPECT_EQ(refreshes_, 1);
}

TEST_F(ImportTarget, ClosingWithinTheLastFileSaysNothing)
{
    const QByteArray large(qsizetype{48} << 20, 'x');
    put(kKept, large);
    load();
    bool isUnderWay = false;
    QObject::connect(&import_, &Import::changed, &import_, [&] {
        if (std::exchange(isUnderWay, face().running)) {
            import_.close();
        }
    });
    go();
    EXPECT_EQ(messages_, QStringList());
    EXPECT_FALSE(face().running);
    EXPECT_EQ(house_.images(kCamera), QStringList{kKept});
    EXPECT_EQ(refreshes_, 1);
}

TEST_F(ImportTarget, AfterAStopTheNextRunCopiesAgain)
{
    put(kKept);
    load();
    import_.go();
    import_.close();
    finish();
    EXPECT_EQ(house_.images(kCamera), QStringList());
    load();
    EXPECT_TRUE(face().cmdGo);
    go();
    EXPECT_EQ(messages_, QStringList{QStringLiteral("1 file copied")});
}

TEST_F(ImportTarget, TheStoredImageIsShownOnceTheStorageFolderIsBack)
{
    house_.putImage(kCamera, QStringLiteral("20061005_1230450001.jpg"));
    QDir(house_.tree.path(u"drives/c")).rename(QStringLiteral("in"), QStringLiteral("ni"));
    house_.storage.testSA();
    load();
    ASSERT_EQ(face().iTarget, QString());
    QDir(house_.tree.path(u"drives/c")).rename(QStringLiteral("ni"), QStringLiteral("in"));
    house_.storage.testSA();
    finish();
    EXPECT_EQ(face().iTarget, picture(QStringLiteral("20061005_1230450001.jpg")));
}

TEST_F(ImportTarget, NoImageOfAnotherStorageFolderIsShownAfterARunThatItEnded)
{
    house_.putImage(kCamera, QStringLiteral("20061005_1230450001.jpg"));
    put(QStringLiteral("a.jpg"));
    load();
    ASSERT_NE(face().iTarget, QString());
    house_.tree.makeFolder(u"drives/c/other");
    import_.go();
    ASSERT_TRUE(face().running);
    house_.storage.edit(QStringLiteral("C:\\other"));
    house_.storage.putInForce();
    finish();
    ASSERT_FALSE(face().running);
    EXPECT_EQ(face().iTarget, QString());
}

} // namespace
} // namespace velmora::test
