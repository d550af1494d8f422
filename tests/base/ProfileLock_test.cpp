// The lock under which settings are changed: who can hold it, and what does not block it.
#include "base/ProfileLock.h"

#include "base/UniqueFd.h"
#include "support/TempTree.h"
#include "support/WithoutRootRights.h"

#include <QFile>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <optional>
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

    /// Whether any holder keeps the file of that path locked.
    static bool isLocked(const QByteArray &path)
    {
        const UniqueFd file(::open(path.constData(), O_RDWR | O_CLOEXEC));
        struct flock lock = {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        EXPECT_EQ(::fcntl(file.get(), F_OFD_GETLK, &lock), 0);
        return lock.l_type != F_UNLCK;
    }

    [[nodiscard]] bool isLocked() const { return isLocked(lockPath()); }

    [[nodiscard]] bool canBeHeld() const
    {
        const ProfileLock lock(settings());
        return isLocked();
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
    std::optional<ProfileLock> first(std::in_place, settings());
    EXPECT_TRUE(isLocked());
    const ProfileLock second(settings());
    first.reset();
    EXPECT_FALSE(isLocked());
}

TEST_F(ProfileLockTest, IsFreeOnceItsHolderIsGone)
{
    {
        const ProfileLock first(settings());
        ASSERT_TRUE(isLocked());
    }
    EXPECT_FALSE(isLocked());
    EXPECT_TRUE(canBeHeld());
}

TEST_F(ProfileLockTest, NoReaderOfTheFolderCanHoldIt)
{
    const UniqueFd reader(
        ::open(QFile::encodeName(tree.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(reader.get(), LOCK_EX), 0);
    EXPECT_TRUE(canBeHeld());
}

TEST_F(ProfileLockTest, NoReaderOfTheSettingsCanHoldIt)
{
    tree.write(u"a.ini", "[Control]\r\n");
    const UniqueFd reader(::open(QFile::encodeName(settings()).constData(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(::flock(reader.get(), LOCK_EX), 0);
    EXPECT_TRUE(canBeHeld());
}

TEST_F(ProfileLockTest, ItsFileIsForItsOwnerAloneWhateverTheMask)
{
    const mode_t before = ::umask(0);
    EXPECT_TRUE(canBeHeld());
    ::umask(before);
    EXPECT_EQ(lockInfo().st_mode & 07777, mode_t{0600});
}

TEST_F(ProfileLockTest, IsHeldAgainAfterAMaskThatKeepsTheOwnerOut)
{
    const WithoutRootRights ordinary;
    const TempTree own;
    const mode_t before = ::umask(0777);
    std::optional<ProfileLock> lock(std::in_place, own.path(u"a.ini"));
    ::umask(before);
    const QByteArray path = QFile::encodeName(own.path(u".a.ini.lock"));
    EXPECT_TRUE(isLocked(path));
    lock.reset();
    EXPECT_FALSE(isLocked(path));
    lock.emplace(own.path(u"a.ini"));
    EXPECT_TRUE(isLocked(path));
}

TEST_F(ProfileLockTest, AFileThatOthersMayReadIsTakenBackFromThem)
{
    tree.write(u".a.ini.lock", "");
    ASSERT_EQ(::chmod(lockPath().constData(), 0644), 0);
    EXPECT_TRUE(canBeHeld());
    EXPECT_EQ(lockInfo().st_mode & 07777, mode_t{0600});
}

// A user who may not give the folder away checks that his own file is his.
TEST_F(ProfileLockTest, OfTheAdministratorIsTheFolderOwners)
{
    const QByteArray native = QFile::encodeName(tree.path());
    static_cast<void>(::chown(native.constData(), 1234, 1234));
    struct stat folder = {};
    ASSERT_EQ(::stat(native.constData(), &folder), 0);
    EXPECT_TRUE(canBeHeld());
    EXPECT_EQ(lockInfo().st_uid, folder.st_uid);
}

TEST_F(ProfileLockTest, FollowsNoLink)
{
    tree.write(u"other", "text");
    ASSERT_EQ(::symlink(QFile::encodeName(tree.path(u"other")).constData(), lockPath().constData()),
              0);
    const ProfileLock lock(settings());
    EXPECT_FALSE(isLocked(QFile::encodeName(tree.path(u"other"))));
}

TEST_F(ProfileLockTest, WaitsForNoPipe)
{
    ASSERT_EQ(::mkfifo(lockPath().constData(), 0600), 0);
    const ProfileLock lock(settings());
    const UniqueFd writer(::open(lockPath().constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_FALSE(writer) << "the pipe is open at its other end";
}

TEST_F(ProfileLockTest, IsGoneWithoutInAMissingFolder)
{
    const ProfileLock lock(tree.path(u"missing/a.ini"));
    EXPECT_FALSE(tree.exists(u"missing"));
}

} // namespace
} // namespace velmora
