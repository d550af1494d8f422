// The lock under which settings are changed: who can hold it, and what does not block it.
#include "base/ProfileLock.h"

#include "base/UniqueFd.h"
#include "support/TempTree.h"
#include "support/WithoutRootRights.h"

#include <QFile>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

using test::TempTree;
using test::WithoutRootRights;

class ProfileLockTest : public testing::Test
{
protected:
    [[nodiscard]] QString settings() const { return tree.path(u"a.ini"); }

    [[nodiscard]] QByteArray lockPath() const
    {
        return QFile::encodeName(tree.path(u".a.ini.lock"));
    }

    [[nodiscard]] struct stat lockInfo() const
    {
        struct stat info = {};
        EXPECT_EQ(::stat(lockPath().constData(), &info), 0);
        return info;
    }

    TempTree tree;
};

TEST_F(ProfileLockTest, IsHeldByOneAtATime)
{
    const ProfileLock first(settings());
    EXPECT_TRUE(first.isHeld());
    EXPECT_FALSE(ProfileLock(settings()).isHeld());
}

TEST_F(ProfileLockTest, IsFreeOnceItsHolderIsGone)
{
    {
        const ProfileLock first(settings());
        ASSERT_TRUE(first.isHeld());
    }
    EXPECT_TRUE(ProfileLock(settings()).isHeld());
}

TEST_F(ProfileLockTest, NoReaderOfTheFolderCanHoldIt)
{
    const UniqueFd reader(
        ::open(QFile::encodeName(tree.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(reader.get(), LOCK_EX), 0);
    EXPECT_TRUE(ProfileLock(settings()).isHeld());
}

TEST_F(ProfileLockTest, NoReaderOfTheSettingsCanHoldIt)
{
    tree.write(u"a.ini", "[Control]\r\n");
    const UniqueFd reader(::open(QFile::encodeName(settings()).constData(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::flock(reader.get(), LOCK_EX), 0);
    EXPECT_TRUE(ProfileLock(settings()).isHeld());
}

TEST_F(ProfileLockTest, ItsFileIsForItsOwnerAloneWhateverTheMask)
{
    const mode_t before = ::umask(0);
    EXPECT_TRUE(ProfileLock(settings()).isHeld());
    ::umask(before);
    EXPECT_EQ(lockInfo().st_mode & 07777, mode_t{0600});
}

TEST_F(ProfileLockTest, IsHeldAgainAfterAMaskThatKeepsTheOwnerOut)
{
    const WithoutRootRights ordinary;
    const TempTree own;
    const mode_t before = ::umask(0777);
    const bool isHeld = ProfileLock(own.path(u"a.ini")).isHeld();
    ::umask(before);
    EXPECT_TRUE(isHeld);
    EXPECT_TRUE(ProfileLock(own.path(u"a.ini")).isHeld());
}

TEST_F(ProfileLockTest, AFileThatOthersMayReadIsTakenBackFromThem)
{
    tree.write(u".a.ini.lock", "");
    ASSERT_EQ(::chmod(lockPath().constData(), 0644), 0);
    EXPECT_TRUE(ProfileLock(settings()).isHeld());
    EXPECT_EQ(lockInfo().st_mode & 07777, mode_t{0600});
}

// A user who may not give the folder away checks that his own file is his.
TEST_F(ProfileLockTest, OfTheAdministratorIsTheFolderOwners)
{
    const QByteArray native = QFile::encodeName(tree.path());
    static_cast<void>(::chown(native.constData(), 1234, 1234));
    struct stat folder = {};
    ASSERT_EQ(::stat(native.constData(), &folder), 0);
    EXPECT_TRUE(ProfileLock(settings()).isHeld());
    EXPECT_EQ(lockInfo().st_uid, folder.st_uid);
}

TEST_F(ProfileLockTest, FollowsNoLink)
{
    tree.write(u"other", "text");
    ASSERT_EQ(::symlink(QFile::encodeName(tree.path(u"other")).constData(), lockPath().constData()),
              0);
    EXPECT_FALSE(ProfileLock(settings()).isHeld());
}

TEST_F(ProfileLockTest, WaitsForNoPipe)
{
    ASSERT_EQ(::mkfifo(lockPath().constData(), 0600), 0);
    EXPECT_FALSE(ProfileLock(settings()).isHeld());
}

TEST_F(ProfileLockTest, IsGoneWithoutInAMissingFolder)
{
    EXPECT_FALSE(ProfileLock(tree.path(u"missing/a.ini")).isHeld());
}

} // namespace
} // namespace velmora
