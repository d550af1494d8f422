// The effects of a bad download, and of a picture that cannot be written.
#include "CaptureTest.h"
#include "support/RefusedCalls.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>

#include <cerrno>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kCamera{0, 3};

class ChargeFileFails : public CaptureTest
{
protected:
    /// A camera that has been good so far and has an image.
    void addWithHistory(const ScriptedReply &reply)
    {
        add(kCamera, reply);
        house_.putImage(kCamera, QStringLiteral("20060101_0000000100.jpg"));
        setHistory();
    }

    void setHistory()
    {
        house_.setValue(u"LastModified", kCamera, QStringLiteral("01/01/2006 00:00:00"));
        house_.setValue(u"LocalTime", kCamera, QStringLiteral("01/01/2006 01:00:00"));
        house_.setValue(u"BestTime", kCamera, QStringLiteral("00:07:00"));
        house_.setValue(u"lNew", kCamera, QStringLiteral("4"));
        house_.setValue(u"SB", kCamera, kGreen);
        house_.setValue(u"TimeLoad", kCamera, QStringLiteral("9"));
    }

    void expectHistoryKept() const
    {
        EXPECT_EQ(house_.value(u"LastModified", kCamera), QStringLiteral("01/01/2006 00:00:00"));
        EXPECT_EQ(house_.value(u"LocalTime", kCamera), QStringLiteral("01/01/2006 01:00:00"));
        EXPECT_EQ(house_.value(u"BestTime", kCamera), QStringLiteral("00:07:00"));
        EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("4"));
    }

    [[nodiscard]] QString trouble() const { return house_.status.text(Caption::Trouble); }
};

TEST_F(ChargeFileFails, ChangingDurationAndColourAlone)
{
    addWithHistory(failedReply());
    house_.load(kCamera);
    expectHistoryKept();
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    EXPECT_EQ(house_.value(u"TimeLoad", kCamera), QStringLiteral("0"));
    EXPECT_EQ(house_.images(kCamera).size(), 1);
}

TEST_F(ChargeFileFails, LeavingWordOfTheReason)
{
    addWithHistory(failedReply());
    house_.load(kCamera);
    EXPECT_EQ(house_.page.remarks().of(kCamera), QStringLiteral("the camera is out"));
    source_.answer(cameraUrl(kCamera), goodReply());
    house_.load(kCamera);
    EXPECT_EQ(house_.page.remarks().of(kCamera), QString());
}

TEST_F(ChargeFileFails, LeavingWordThatWhatWasStoredIsNoPicture)
{
    add(kCamera, {QByteArray(3000, '<'), kLastModified, QStringLiteral("text/html"), {}, {}});
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera).size(), 1);
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
    EXPECT_EQ(house_.page.remarks().of(kCamera), QStringLiteral("not a picture (text/html)"));
}

TEST_F(ChargeFileFails, LeavingWordThatNoDateComes)
{
    add(kCamera, goodReply(QString()));
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera).size(), 1);
    EXPECT_TRUE(house_.page.remarks().of(kCamera).contains(u"no date"));
}

TEST_F(ChargeFileFails, ChangingDurationAndColourAloneForAShortBody)
{
    addWithHistory(goodReply(kLastModified, 999));
    house_.load(kCamera);
    expectHistoryKept();
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    EXPECT_EQ(house_.value(u"TimeLoad", kCamera), QStringLiteral("0"));
    EXPECT_EQ(house_.images(kCamera).size(), 1);
}

TEST_F(ChargeFileFails, WithALongPageThatCannotBeTakenForAPicture)
{
    ScriptedReply page = failedReply();
    page.body = QByteArray(5000, 'n');
    add(kCamera, page);
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList());
}

TEST_F(ChargeFileFails, OnATimeout)
{
    addWithHistory(delayedReply(1h));
    house_.beginLoad(kCamera);
    clock_.advance(5s);
    expectHistoryKept();
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    EXPECT_EQ(house_.value(u"TimeLoad", kCamera), QStringLiteral("5"));
    EXPECT_EQ(house_.images(kCamera).size(), 1);
}

TEST_F(ChargeFileFails, TellingWhy)
{
    add(kCamera, failedReply());
    house_.load(kCamera);
    EXPECT_EQ(house_.failed(), QStringList{QStringLiteral("0:3")});
    EXPECT_TRUE(house_.allTexts().contains(QStringLiteral("the camera is out")));
    EXPECT_EQ(house_.stored(), QStringList());
}

TEST_F(ChargeFileFails, TellingHowShortTheBodyIs)
{
    add(kCamera, goodReply(kLastModified, 999));
    house_.load(kCamera);
    EXPECT_EQ(house_.allTexts().filter(QStringLiteral("999 bytes")).size(), 1);
}

TEST_F(ChargeFileFails, WithoutYellowOnScreen)
{
    add(kCamera, failedReply());
    bool yellow = false;
    QObject::connect(&house_.page, &CameraPage::rowChanged, &house_, [this, &yellow](int row) {
        yellow = yellow || house_.page.row(row).lamp == LampColour::Yellow;
    });
    house_.load(kCamera);
    EXPECT_FALSE(yellow);
    EXPECT_EQ(house_.page.row(kCamera.row).lamp, LampColour::Red);
}

TEST_F(ChargeFileFails, AndTriesAgainNextTime)
{
    addWithHistory(failedReply());
    house_.load(kCamera);
    source_.answer(cameraUrl(kCamera), goodReply());
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera).size(), 2);
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("5"));
}

TEST_F(ChargeFileFails, ToStoreWhereTheDiskRefusesTheFoldersNameAndSaysSoOnce)
{
    add(kCamera);
    const RefusedCall refused(Call::MakeFolder, ENAMETOOLONG);
    house_.load(kCamera);
    house_.load(kCamera);
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    EXPECT_TRUE(trouble().contains(QStringLiteral("at most"))) << trouble().toStdString();
    const QString told = QStringLiteral("No image of camera 0:3 can be stored: the name of");
    EXPECT_EQ(house_.allTexts().filter(told).size(), 1);
}

TEST_F(ChargeFileFails, ToStoreWhereTheDiskRefusesACharacterOfTheFoldersName)
{
    add(kCamera);
    for (const int error : {EINVAL, EILSEQ}) {
        const RefusedCall refused(Call::MakeFolder, error);
        house_.load(kCamera);
        EXPECT_TRUE(trouble().contains(QStringLiteral("does not take the name")))
            << trouble().toStdString();
    }
    EXPECT_EQ(house_.allTexts().filter(QStringLiteral("No image of camera 0:3")).size(), 1);
}

TEST_F(ChargeFileFails, ToStoreWhereTheFolderMayNotBeMadeWithoutABoxForIt)
{
    add(kCamera);
    const RefusedCall refused(Call::MakeFolder, EACCES);
    house_.load(kCamera);
    EXPECT_TRUE(trouble().contains(QStringLiteral("Permission denied"))) << trouble().toStdString();
    EXPECT_EQ(house_.allTexts().filter(QStringLiteral("No image of")).size(), 0);
}

TEST_F(ChargeFileFails, ToStoreWhereAFileStandsForTheFolder)
{
    add(kCamera);
    setHistory();
    house_.tree.write(house_.folder(kCamera), "in the way");
    house_.load(kCamera);
    expectHistoryKept();
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    EXPECT_EQ(house_.page.row(kCamera.row).lamp, LampColour::Red);
    EXPECT_EQ(house_.failed(), QStringList{QStringLiteral("0:3")});
    EXPECT_EQ(house_.tree.files(u"drives/c/in/tmp"), QStringList());
}

TEST_F(ChargeFileFails, ToStoreWhereAFileStandsForTheWorkFolder)
{
    addWithHistory(goodReply());
    house_.tree.write(u"drives/c/in/tmp", "in the way");
    house_.load(kCamera);
    expectHistoryKept();
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    EXPECT_EQ(house_.images(kCamera).size(), 1);
    EXPECT_EQ(house_.tree.read(u"drives/c/in/tmp"), "in the way");
}

TEST_F(ChargeFileFails, ToStoreAndSaysWhyUntilItCan)
{
    add(kCamera);
    house_.tree.write(u"drives/c/in/tmp", "in the way");
    house_.load(kCamera);
    EXPECT_TRUE(trouble().contains(QStringLiteral("0:3"))) << trouble().toStdString();
    EXPECT_TRUE(trouble().contains(QStringLiteral("Not a directory"))) << trouble().toStdString();
    ASSERT_TRUE(QFile::remove(house_.tree.path(u"drives/c/in/tmp")));
    house_.load(kCamera);
    EXPECT_EQ(trouble(), QString());
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
    EXPECT_EQ(house_.value(u"LastModified", kCamera), kLastModifiedStored);
}

TEST_F(ChargeFileFails, ToStoreWithoutACheckWhileTheStorageFolderIsThere)
{
    add(kCamera);
    house_.tree.write(u"drives/c/in/tmp", "in the way");
    house_.load(kCamera);
    EXPECT_FALSE(house_.storage.isCheckRequested());
}

TEST_F(ChargeFileFails, ToStoreAndAsksForACheckWhenTheStorageFolderIsGone)
{
    add(kCamera);
    ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    house_.load(kCamera);
    EXPECT_TRUE(house_.storage.isCheckRequested());
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
    EXPECT_FALSE(house_.tree.exists(u"drives/c/in"));
}

TEST_F(ChargeFileFails, ToStoreOnADriveThatIsGone)
{
    const QString stray = QStringLiteral("/20060308_0102030714.jpg");
    const auto cleanUp = qScopeGuard([&stray] { QFile::remove(stray); });
    add(kCamera, goodReply(QStringLiteral("Wed, 08 Mar 2006 01:02:03 GMT")));
    house_.storage.edit(QStringLiteral("Q:\\in"));
    house_.storage.putInForce();
    house_.load(kCamera);
    EXPECT_FALSE(QFile::exists(stray)) << "stored at the root of the file system";
    EXPECT_EQ(house_.failed(), QStringList{QStringLiteral("0:3")});
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
}

TEST_F(ChargeFileFails, ToStoreWithoutCountingForAutomaticMode)
{
    add(kCamera);
    house_.setValue(u"AutoDelai", kCamera, QStringLiteral("1"));
    house_.tree.write(u"drives/c/in/tmp", "in the way");
    house_.load(kCamera);
    EXPECT_EQ(house_.store.automaticCounter(kCamera), 0);
    EXPECT_EQ(house_.stored(), QStringList());
}

} // namespace
} // namespace velmora::test
