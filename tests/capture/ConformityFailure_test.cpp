// Files that cannot be renamed, and passes that are cut short.
#include "ConformityTest.h"
#include "support/RefusedCalls.h"

namespace velmora::test {
namespace {

const QByteArray kShort = "20060307_140509.jpg";
const QByteArray kCurrent = "20060307_1405090714.jpg";

using ConformityFailure = ConformityTest;

TEST_F(ConformityFailure, ReplacesNoFile)
{
    put(kShort);
    writeNative(path(kCurrent), "another picture", kModified);
    run();
    EXPECT_EQ(names(), (QByteArrayList{kShort, kCurrent}));
    EXPECT_EQ(house_.tree.read(house_.folder(kConformed) + u'/' + QString::fromUtf8(kCurrent)),
              "another picture");
}

TEST_F(ConformityFailure, KeepsBothWhenTwoNamesBecomeOne)
{
    put(kShort);
    put("20060307_140509.");
    run();
    EXPECT_EQ(names(), (QByteArrayList{kShort, kCurrent}));
    EXPECT_EQ(house_.tree.read(house_.folder(kConformed) + u'/' + QString::fromUtf8(kCurrent)),
              "picture of 20060307_140509.");
}

TEST_F(ConformityFailure, DoesNotStopThePass)
{
    put(kShort);
    put(kCurrent);
    put("20060307_140510.jpg");
    run();
    EXPECT_EQ(names(), (QByteArrayList{kShort, kCurrent, "20060307_1405100714.jpg"}));
    EXPECT_EQ(ended_, 1);
}

TEST_F(ConformityFailure, IsLoggedWithItsReason)
{
    house_.log.setOn(true);
    put(kShort);
    put(kCurrent);
    run();
    EXPECT_EQ(house_.logText(),
              QStringLiteral("Mise en conformité:20060307_140509.jpg\n"
                             "20060307_140509.jpg cannot be renamed: File exists\n"));
}

TEST_F(ConformityFailure, OfReadingAFolderToItsEndIsLogged)
{
    house_.log.setOn(true);
    put(kShort);
    const RefusedCall failing(Call::ReadFolder, EIO, 1, 1);
    run();
    EXPECT_EQ(names(), QByteArrayList{kCurrent});
    EXPECT_TRUE(house_.logText().contains(
        QStringLiteral(": the folder could not be read to its end: Input/output error\n")));
}

TEST_F(ConformityFailure, LeavesANameThatWouldBecomeTooLong)
{
    const QByteArray longest = "20060307_140509." + QByteArray(239, 'x');
    put(longest);
    run();
    EXPECT_EQ(names(), QByteArrayList{longest});
    EXPECT_FALSE(conformity_.wants(shownPath(longest)));
}

using Wants = ConformityTest;

TEST_F(Wants, FilesOfTheShortForm)
{
    put(kShort);
    EXPECT_TRUE(conformity_.wants(shownPath(kShort)));
}

TEST_F(Wants, NoOtherFiles)
{
    EXPECT_FALSE(conformity_.wants(shownPath(kCurrent)));
    EXPECT_FALSE(conformity_.wants(shownPath("20060307_140509")));
    EXPECT_FALSE(conformity_.wants(shownPath("readme.txt")));
    EXPECT_FALSE(conformity_.wants(QString()));
}

TEST_F(Wants, NoFileThatThePassDoesNotList)
{
    ASSERT_TRUE(Conformity::isShortForm("holiday-picture.jpg"));
    EXPECT_FALSE(conformity_.wants(shownPath("holiday-picture.jpg")));
}

TEST_F(Wants, NoFileThatCouldNotBeRenamed)
{
    put(kShort);
    put(kCurrent);
    run();
    EXPECT_FALSE(conformity_.wants(shownPath(kShort)));
    EXPECT_TRUE(conformity_.wants(shownPath("20060307_140510.jpg")));
    run();
    EXPECT_FALSE(conformity_.wants(shownPath(kShort)));
}

TEST_F(Wants, AFileWhoseNewNameHasBecomeFree)
{
    put(kShort);
    put(kCurrent);
    run();
    ASSERT_EQ(::unlink(path(kCurrent).constData()), 0);
    EXPECT_TRUE(conformity_.wants(shownPath(kShort)));
    run();
    EXPECT_EQ(names(), QByteArrayList{kCurrent});
}

TEST_F(Wants, AFileThatHasAnotherDateNow)
{
    put(kShort);
    put(kCurrent);
    run();
    setModified(path(kShort), kModified + kHour);
    EXPECT_TRUE(conformity_.wants(shownPath(kShort)));
}

TEST_F(Wants, TheFileStillWhenOnlyOthersHaveCome)
{
    put(kShort);
    put(kCurrent);
    run();
    put("20060308_1405090714.jpg");
    EXPECT_FALSE(conformity_.wants(shownPath(kShort)));
}

TEST_F(Wants, NoFileThatCouldNotBeRenamedAndHasNoTextName)
{
    const QByteArray strange = "2006030\xE9_140509.jpg";
    put(strange);
    put("2006030\xE9_1405090714.jpg");
    EXPECT_TRUE(conformity_.wants(shownPath(strange)));
    run();
    EXPECT_FALSE(conformity_.wants(shownPath(strange)));
}

class ReadOnlyFolder : public ConformityTest
{
protected:
    ReadOnlyFolder()
    {
        allow(0555);
        ::chmod(QFile::encodeName(house_.tree.path()).constData(), 0755);
    }

    ~ReadOnlyFolder() override { allow(0755); }

    void allow(mode_t mode) const { ::chmod(folder_.constData(), mode); }

    void runAsUser()
    {
        const WithoutRootRights user;
        run();
    }

    [[nodiscard]] bool userWants() const
    {
        const WithoutRootRights user;
        return conformity_.wants(shownPath(kShort));
    }
};

TEST_F(ReadOnlyFolder, KeepsItsNames)
{
    allow(0777);
    put(kShort);
    allow(0555);
    runAsUser();
    EXPECT_EQ(names(), QByteArrayList{kShort});
    EXPECT_EQ(ended_, 1);
    EXPECT_FALSE(userWants());
}

TEST_F(ReadOnlyFolder, IsWantedOnceItCanBeWritten)
{
    allow(0777);
    put(kShort);
    allow(0555);
    runAsUser();
    allow(0777);
    EXPECT_TRUE(userWants());
    runAsUser();
    EXPECT_EQ(names(), QByteArrayList{kCurrent});
}

class ConformityStop : public ConformityTest
{
protected:
    ConformityStop()
    {
        for (int number = 0; number < 9; ++number) {
            put("20060307_14050" + QByteArray::number(number) + ".jpg");
        }
    }

    void stopAt(const QString &text)
    {
        QObject::connect(&conformity_, &Conformity::statusChanged, &house_,
                         [this, text](const QString &shown) {
                             if (shown == text) {
                                 house_.scope.requestStop();
                             }
                         });
    }
};

TEST_F(ConformityStop, LeavesTheOtherFiles)
{
    stopAt(QStringLiteral("Mise en conformité:20060307_140502.jpg"));
    run();
    EXPECT_EQ(names(),
              (QByteArrayList{"20060307_1405000714.jpg", "20060307_1405010714.jpg",
                              "20060307_1405020714.jpg", "20060307_140503.jpg",
                              "20060307_140504.jpg", "20060307_140505.jpg", "20060307_140506.jpg",
                              "20060307_140507.jpg", "20060307_140508.jpg"}));
}

TEST_F(ConformityStop, LetsTheCapturesRunAgain)
{
    stopAt(QStringLiteral("Mise en conformité:20060307_140502.jpg"));
    run();
    EXPECT_EQ(ended_, 1);
    EXPECT_EQ(texts_.last(), QStringLiteral("Poursuite du chargement"));
    EXPECT_FALSE(conformity_.isRunning());
    EXPECT_FALSE(house_.scheduler.isSuspended());
}

TEST_F(ConformityStop, ComesBeforeTheFirstFile)
{
    stopAt(QStringLiteral("Mise en conformité des fichiers"));
    run();
    EXPECT_EQ(texts_.size(), 2);
    EXPECT_EQ(ended_, 1);
}

TEST_F(ConformityStop, ComesFromAnErrorToo)
{
    busy_.failAtYield(2);
    run();
    EXPECT_EQ(ended_, 1);
    EXPECT_FALSE(conformity_.isRunning());
    EXPECT_FALSE(house_.scheduler.isSuspended());
    EXPECT_TRUE(house_.timer.isActive());
    EXPECT_TRUE(house_.allTexts().contains(QStringLiteral("the clock is broken")));
}

} // namespace
} // namespace velmora::test
