// A lock on a file: who holds it, who learns of whom, and what is left alone in its place.
#include "base/LockFile.h"

#include "support/TempTree.h"
#include "support/WithoutRootRights.h"

#include <QFile>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora {
namespace {

using test::TempTree;
using test::WithoutRootRights;

class LockFileTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return tree.path(u"a.lock"); }

    [[nodiscard]] QByteArray nativePath() const { return QFile::encodeName(path()); }

    [[nodiscard]] mode_t mode() const
    {
        struct stat info = {};
        EXPECT_EQ(::stat(nativePath().constData(), &info), 0);
        return info.st_mode & 07777;
    }

    TempTree tree;
};

TEST_F(LockFileTest, IsTakenByTheFirst)
{
    LockFile lock(path());
    EXPECT_EQ(lock.take("note").outcome, LockOutcome::Taken);
    EXPECT_TRUE(tree.read(u"a.lock").startsWith(QByteArray::number(::getpid()) + "\nnote\n"));
    EXPECT_EQ(tree.read(u"a.lock").count('\n'), 3);
}

TEST_F(LockFileTest, TellsTheSecondWhoHasIt)
{
    LockFile first(path());
    ASSERT_EQ(first.take("here I am").outcome, LockOutcome::Taken);
    LockFile second(path());
    const LockAttempt attempt = second.take({});
    EXPECT_EQ(attempt.outcome, LockOutcome::HeldByAnother);
    EXPECT_EQ(attempt.holder.process, ::getpid());
    EXPECT_EQ(attempt.holder.note, QByteArray("here I am"));
}

TEST_F(LockFileTest, IsGivenUpWithItsHolderAndItsFileGoes)
{
    {
        LockFile first(path());
        ASSERT_EQ(first.take({}).outcome, LockOutcome::Taken);
    }
    EXPECT_EQ(tree.files(), QStringList());
    LockFile second(path());
    EXPECT_EQ(second.take({}).outcome, LockOutcome::Taken);
}

TEST_F(LockFileTest, StaysWithTheFirstWhenTheSecondGoes)
{
    LockFile first(path());
    ASSERT_EQ(first.take({}).outcome, LockOutcome::Taken);
    {
        LockFile second(path());
        ASSERT_EQ(second.take({}).outcome, LockOutcome::HeldByAnother);
    }
    EXPECT_TRUE(lockHolder(path()).has_value());
}

TEST_F(LockFileTest, OfAKilledProcessIsFree)
{
    std::array<int, 2> ends = {};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        LockFile lock(path());
        const char byte = lock.take({}).outcome == LockOutcome::Taken ? 'y' : 'n';
        static_cast<void>(::write(ends[1], &byte, 1));
        ::pause();
    }
    char byte = 0;
    ASSERT_EQ(::read(ends[0], &byte, 1), 1);
    ASSERT_EQ(byte, 'y');
    LockFile lock(path());
    const LockAttempt attempt = lock.take({});
    EXPECT_EQ(attempt.outcome, LockOutcome::HeldByAnother);
    EXPECT_EQ(attempt.holder.process, child);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(ends[0]);
    ::close(ends[1]);
    EXPECT_FALSE(lockHolder(path()).has_value());
    EXPECT_EQ(lock.take({}).outcome, LockOutcome::Taken);
}

TEST_F(LockFileTest, IsForItsHolderAlone)
{
    tree.write(u"a.lock", "left over, and longer than what comes\n");
    ASSERT_EQ(::chmod(nativePath().constData(), 0666), 0);
    const mode_t before = ::umask(0);
    LockFile lock(path());
    const LockAttempt attempt = lock.take({});
    ::umask(before);
    EXPECT_EQ(attempt.outcome, LockOutcome::Taken);
    EXPECT_EQ(mode(), 0600U);
    EXPECT_TRUE(tree.read(u"a.lock").startsWith(QByteArray::number(::getpid()) + "\n\n"));
    EXPECT_FALSE(tree.read(u"a.lock").contains("left over"));
}

TEST_F(LockFileTest, IsForItsHolderWhateverTheMask)
{
    const WithoutRootRights ordinary;
    const TempTree own;
    for (const mode_t mask : {mode_t{0777}, mode_t{0700}, mode_t{0277}}) {
        const mode_t before = ::umask(mask);
        LockFile first(own.path(u"a.lock"));
        const LockOutcome outcome = first.take({}).outcome;
        ::umask(before);
        ASSERT_EQ(outcome, LockOutcome::Taken);
        LockFile second(own.path(u"a.lock"));
        EXPECT_EQ(second.take({}).outcome, LockOutcome::HeldByAnother);
        EXPECT_TRUE(lockHolder(own.path(u"a.lock")).has_value());
    }
}

TEST_F(LockFileTest, TakesBackTheRightsToAFileOfItsOwn)
{
    const WithoutRootRights ordinary;
    const TempTree own;
    for (const mode_t mode : {mode_t{0}, mode_t{0400}, mode_t{0200}}) {
        own.write(u"a.lock", "1\n");
        ASSERT_EQ(::chmod(QFile::encodeName(own.path(u"a.lock")).constData(), mode), 0);
        LockFile lock(own.path(u"a.lock"));
        EXPECT_EQ(lock.take({}).outcome, LockOutcome::Taken);
    }
}

TEST_F(LockFileTest, ChangesTheRightsToNoFileBehindALink)
{
    const WithoutRootRights ordinary;
    const TempTree own;
    own.write(u"precious", "text");
    const QByteArray precious = QFile::encodeName(own.path(u"precious"));
    ASSERT_EQ(::chmod(precious.constData(), 0), 0);
    ASSERT_TRUE(QFile::link(own.path(u"precious"), own.path(u"a.lock")));
    ASSERT_EQ(::link(precious.constData(), QFile::encodeName(own.path(u"b.lock")).constData()), 0);
    EXPECT_EQ(LockFile(own.path(u"a.lock")).take({}).outcome, LockOutcome::Impossible);
    EXPECT_EQ(LockFile(own.path(u"b.lock")).take({}).outcome, LockOutcome::Impossible);
    struct stat info = {};
    ASSERT_EQ(::stat(precious.constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0U);
}

TEST_F(LockFileTest, FollowsNoLink)
{
    tree.write(u"precious", "text");
    ASSERT_TRUE(QFile::link(tree.path(u"precious"), path()));
    LockFile lock(path());
    EXPECT_EQ(lock.take({}).outcome, LockOutcome::Impossible);
    EXPECT_EQ(tree.read(u"precious"), QByteArray("text"));
}

TEST_F(LockFileTest, WritesIntoNoSecondNameOfAFile)
{
    tree.write(u"precious", "text");
    ASSERT_EQ(
        ::link(QFile::encodeName(tree.path(u"precious")).constData(), nativePath().constData()), 0);
    LockFile lock(path());
    EXPECT_EQ(lock.take({}).outcome, LockOutcome::Impossible);
    EXPECT_EQ(tree.read(u"precious"), QByteArray("text"));
}

TEST_F(LockFileTest, TrustsNoFileOfAStranger)
{
    constexpr uid_t kStranger = 54321;
    tree.write(u"a.lock", "1\n");
    if (::geteuid() == 0) { // no one else can give files away
        ASSERT_EQ(::chown(nativePath().constData(), kStranger, kStranger), 0);
        LockFile lock(path());
        EXPECT_EQ(lock.take({}).outcome, LockOutcome::Impossible);
        EXPECT_FALSE(lockHolder(path()).has_value());
    }
}

TEST_F(LockFileTest, WaitsForNoPipe)
{
    ASSERT_EQ(::mkfifo(nativePath().constData(), 0600), 0);
    LockFile lock(path());
    EXPECT_EQ(lock.take({}).outcome, LockOutcome::Impossible);
    EXPECT_FALSE(lockHolder(path()).has_value());
}

TEST_F(LockFileTest, IsImpossibleInAMissingFolder)
{
    LockFile lock(tree.path(u"missing/a.lock"));
    const LockAttempt attempt = lock.take({});
    EXPECT_EQ(attempt.outcome, LockOutcome::Impossible);
    EXPECT_EQ(attempt.error, std::errc::no_such_file_or_directory);
}

TEST_F(LockFileTest, AFileThatNoOneHoldsHasNoHolder)
{
    tree.write(u"a.lock", "1\n");
    EXPECT_FALSE(lockHolder(path()).has_value());
    EXPECT_FALSE(lockHolder(tree.path(u"missing")).has_value());
}

// A container counts its processes from 1, so its numbers name others here.
TEST_F(LockFileTest, DoesNotNameAHolderThatCountsItsProcessesElsewhere)
{
    LockFile first(path());
    ASSERT_EQ(first.take("here").outcome, LockOutcome::Taken);
    tree.write(u"a.lock", QByteArray::number(::getpid()) + "\nhere\nelsewhere\n");
    const std::optional<LockHolder> holder = lockHolder(path());
    ASSERT_TRUE(holder.has_value());
    EXPECT_EQ(holder->process, 0);
    EXPECT_EQ(holder->note, QByteArray("here"));
}

TEST_F(LockFileTest, NamesAHolderThatDoesNotSayWhereItCounts)
{
    LockFile first(path());
    ASSERT_EQ(first.take({}).outcome, LockOutcome::Taken);
    tree.write(u"a.lock", QByteArray::number(::getpid()) + "\n\n");
    EXPECT_EQ(lockHolder(path()).value_or(LockHolder{}).process, ::getpid());
}

TEST_F(LockFileTest, AskingForTheHolderDisturbsNoOne)
{
    LockFile lock(path());
    ASSERT_EQ(lock.take("n").outcome, LockOutcome::Taken);
    for (int i = 0; i < 3; ++i) {
        const std::optional<LockHolder> holder = lockHolder(path());
        ASSERT_TRUE(holder.has_value());
        EXPECT_EQ(holder->process, ::getpid());
        EXPECT_EQ(holder->note, QByteArray("n"));
    }
}

} // namespace
} // namespace velmora
