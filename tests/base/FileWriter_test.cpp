// Files that appear whole: nothing is replaced that must stay, and a failure leaves no trace.
#include "base/FileWriter.h"

#include "support/FileSizeLimit.h"
#include "support/TempTree.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

using test::FileSizeLimit;
using test::TempTree;

constexpr uid_t kSomeone = 1234;

mode_t modeOf(const QString &path)
{
    struct stat info = {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &info), 0);
    return info.st_mode & 07777;
}

uid_t ownerOf(const QString &path)
{
    struct stat info = {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &info), 0);
    return info.st_uid;
}

void setMode(const QString &path, mode_t mode)
{
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

class StoreNewFile : public testing::Test
{
protected:
    StoreResult store(QStringView target, QByteArrayView bytes) const
    {
        return storeNewFile(tree.path(u"work"), tree.path(target), bytes);
    }

    TempTree tree;
};

TEST_F(StoreNewFile, WritesTheBytes)
{
    const QByteArray bytes("\xff\xd8\0picture", 10);
    const StoreResult result = store(u"a.jpg", bytes);
    EXPECT_EQ(result.outcome, StoreOutcome::Stored);
    EXPECT_FALSE(result.error);
    EXPECT_EQ(tree.read(u"a.jpg"), bytes);
}

TEST_F(StoreNewFile, MakesTheWorkFolderAndLeavesItEmpty)
{
    EXPECT_EQ(store(u"a.jpg", "x").outcome, StoreOutcome::Stored);
    ASSERT_TRUE(QFileInfo(tree.path(u"work")).isDir());
    EXPECT_EQ(tree.files(u"work"), QStringList());
}

TEST_F(StoreNewFile, GivesTheFileOneNameOnly)
{
    ASSERT_EQ(store(u"a.jpg", "x").outcome, StoreOutcome::Stored);
    struct stat info = {};
    ASSERT_EQ(::stat(QFile::encodeName(tree.path(u"a.jpg")).constData(), &info), 0);
    EXPECT_EQ(info.st_nlink, 1U);
}

TEST_F(StoreNewFile, NeverReplacesAFile)
{
    tree.write(u"a.jpg", "old");
    const StoreResult result = store(u"a.jpg", "new");
    EXPECT_EQ(result.outcome, StoreOutcome::AlreadyThere);
    EXPECT_EQ(tree.read(u"a.jpg"), QByteArray("old"));
    EXPECT_EQ(tree.files(u"work"), QStringList());
}

TEST_F(StoreNewFile, NeverReplacesABrokenLink)
{
    ASSERT_TRUE(QFile::link(tree.path(u"nowhere"), tree.path(u"a.jpg")));
    EXPECT_EQ(store(u"a.jpg", "new").outcome, StoreOutcome::AlreadyThere);
    EXPECT_FALSE(tree.exists(u"nowhere"));
}

TEST_F(StoreNewFile, FailsWhenTheTargetFolderIsMissing)
{
    const StoreResult result = store(u"missing/a.jpg", "x");
    EXPECT_EQ(result.outcome, StoreOutcome::Failed);
    EXPECT_EQ(result.error, std::errc::no_such_file_or_directory);
    EXPECT_EQ(tree.files(u"work"), QStringList());
}

TEST_F(StoreNewFile, FailsWhenTheWorkFolderCannotBeMade)
{
    const StoreResult result = storeNewFile(tree.path(u"two/levels"), tree.path(u"a.jpg"), "x");
    EXPECT_EQ(result.outcome, StoreOutcome::Failed);
    EXPECT_EQ(result.error, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(tree.exists(u"a.jpg"));
}

TEST_F(StoreNewFile, FailsWhenAFileStandsForTheWorkFolder)
{
    tree.write(u"work", "");
    const StoreResult result = store(u"a.jpg", "x");
    EXPECT_EQ(result.outcome, StoreOutcome::Failed);
    EXPECT_EQ(result.error, std::errc::not_a_directory);
}

TEST_F(StoreNewFile, LeavesNothingWhenTheDiskIsFull)
{
    const FileSizeLimit limit(1000);
    const StoreResult result = store(u"a.jpg", QByteArray(5000, 'x'));
    EXPECT_EQ(result.outcome, StoreOutcome::Failed);
    EXPECT_EQ(result.error, std::errc::file_too_large);
    EXPECT_EQ(tree.files(), QStringList());
    EXPECT_EQ(tree.files(u"work"), QStringList());
}

TEST_F(StoreNewFile, GivesTheRightsThatTheMaskLeaves)
{
    for (const mode_t mask : {mode_t{077}, mode_t{022}, mode_t{0}}) {
        const QString name = QString::number(mask);
        const mode_t before = ::umask(mask);
        const StoreResult result = store(name, "bytes");
        ::umask(before);
        ASSERT_EQ(result.outcome, StoreOutcome::Stored);
        EXPECT_EQ(modeOf(tree.path(name)), 0666 & ~mask);
    }
}

TEST_F(StoreNewFile, WritesAnEmptyFile)
{
    EXPECT_EQ(store(u"a.jpg", {}).outcome, StoreOutcome::Stored);
    EXPECT_EQ(tree.read(u"a.jpg"), QByteArray());
}

TEST_F(StoreNewFile, LeavesTheRightsToTheMask)
{
    const mode_t before = ::umask(077);
    EXPECT_EQ(store(u"a.jpg", "x").outcome, StoreOutcome::Stored);
    ::umask(before);
    EXPECT_EQ(modeOf(tree.path(u"a.jpg")), 0600U);
}

class ReplaceFile : public testing::Test
{
protected:
    TempTree tree;
};

TEST_F(ReplaceFile, MakesAMissingFile)
{
    EXPECT_FALSE(replaceFile(tree.path(u"a.ini"), "new"));
    EXPECT_EQ(tree.read(u"a.ini"), QByteArray("new"));
    EXPECT_EQ(tree.files(), QStringList{QStringLiteral("a.ini")});
    EXPECT_EQ(modeOf(tree.path(u"a.ini")), 0600U);
}

TEST_F(ReplaceFile, PutsAnotherTextInPlace)
{
    tree.write(u"a.ini", "a longer text");
    EXPECT_FALSE(replaceFile(tree.path(u"a.ini"), "new"));
    EXPECT_EQ(tree.read(u"a.ini"), QByteArray("new"));
    EXPECT_EQ(tree.files(), QStringList{QStringLiteral("a.ini")});
}

TEST_F(ReplaceFile, MakesAFileForItsOwnerAlone)
{
    EXPECT_FALSE(replaceFile(tree.path(u"a.ini"), "new"));
    EXPECT_EQ(modeOf(tree.path(u"a.ini")), 0600U);
}

TEST_F(ReplaceFile, KeepsThePermissions)
{
    for (const mode_t mode : {0600U, 0640U, 0644U, 0664U, 0666U}) {
        SCOPED_TRACE(mode);
        tree.write(u"a.ini", "old");
        setMode(tree.path(u"a.ini"), mode);
        EXPECT_FALSE(replaceFile(tree.path(u"a.ini"), "new"));
        EXPECT_EQ(modeOf(tree.path(u"a.ini")), mode);
    }
}

// As with "sudo": what the administrator writes must not shut the user out.
TEST_F(ReplaceFile, KeepsTheOwner)
{
    tree.write(u"a.ini", "old");
    const QByteArray path = QFile::encodeName(tree.path(u"a.ini"));
    const uid_t owner = ::geteuid() == 0 ? kSomeone : ::geteuid();
    ASSERT_EQ(::chown(path.constData(), owner, ::geteuid() == 0 ? kSomeone : ::getegid()), 0);
    setMode(tree.path(u"a.ini"), 0640);
    EXPECT_FALSE(replaceFile(tree.path(u"a.ini"), "new"));
    EXPECT_EQ(ownerOf(tree.path(u"a.ini")), owner);
    EXPECT_EQ(modeOf(tree.path(u"a.ini")), 0640U);
}

TEST_F(ReplaceFile, MakesAMissingFileForTheFoldersOwner)
{
    const uid_t owner = ::geteuid() == 0 ? kSomeone : ::geteuid();
    tree.makeFolder(u"home");
    const QByteArray folder = QFile::encodeName(tree.path(u"home"));
    ASSERT_EQ(::chown(folder.constData(), owner, static_cast<gid_t>(-1)), 0);
    EXPECT_FALSE(replaceFile(tree.path(u"home/a.ini"), "new"));
    EXPECT_EQ(ownerOf(tree.path(u"home/a.ini")), owner);
    EXPECT_EQ(modeOf(tree.path(u"home/a.ini")), 0600U);
}

TEST_F(ReplaceFile, FollowsALink)
{
    tree.write(u"real/a.ini", "old");
    ASSERT_TRUE(QFile::link(tree.path(u"real/a.ini"), tree.path(u"a.ini")));
    EXPECT_FALSE(replaceFile(tree.path(u"a.ini"), "new"));
    EXPECT_TRUE(QFileInfo(tree.path(u"a.ini")).isSymLink());
    EXPECT_EQ(tree.read(u"real/a.ini"), QByteArray("new"));
    EXPECT_EQ(tree.files(u"real"), QStringList{QStringLiteral("a.ini")});
}

TEST_F(ReplaceFile, KeepsTheOldTextWhenTheDiskIsFull)
{
    tree.write(u"a.ini", "old");
    const FileSizeLimit limit(1000);
    EXPECT_EQ(replaceFile(tree.path(u"a.ini"), QByteArray(5000, 'x')), std::errc::file_too_large);
    EXPECT_EQ(tree.read(u"a.ini"), QByteArray("old"));
    EXPECT_EQ(tree.files(), QStringList{QStringLiteral("a.ini")});
}

TEST_F(ReplaceFile, FailsInAMissingFolder)
{
    EXPECT_EQ(replaceFile(tree.path(u"missing/a.ini"), "x"), std::errc::no_such_file_or_directory);
}

TEST_F(ReplaceFile, LeavesAFolderOfThatNameAlone)
{
    tree.makeFolder(u"a.ini");
    EXPECT_EQ(replaceFile(tree.path(u"a.ini"), "x"), std::errc::is_a_directory);
    EXPECT_TRUE(QFileInfo(tree.path(u"a.ini")).isDir());
    EXPECT_EQ(tree.files(), QStringList());
}

TEST_F(ReplaceFile, LeavesAPipeAlone)
{
    const QByteArray pipe = QFile::encodeName(tree.path(u"a.ini"));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    EXPECT_EQ(replaceFile(tree.path(u"a.ini"), "x"), std::errc::invalid_argument);
    struct stat info = {};
    ASSERT_EQ(::stat(pipe.constData(), &info), 0);
    EXPECT_TRUE(S_ISFIFO(info.st_mode));
}

// As a link to a device of the system is.
TEST_F(ReplaceFile, LeavesAPipeBehindALinkAlone)
{
    const QByteArray pipe = QFile::encodeName(tree.path(u"pipe"));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(tree.path(u"pipe"), tree.path(u"a.ini")));
    EXPECT_EQ(replaceFile(tree.path(u"a.ini"), "x"), std::errc::invalid_argument);
    struct stat info = {};
    ASSERT_EQ(::stat(pipe.constData(), &info), 0);
    EXPECT_TRUE(S_ISFIFO(info.st_mode));
    EXPECT_TRUE(QFileInfo(tree.path(u"a.ini")).isSymLink());
}

// What it leads to may be on a disk that is away.
TEST_F(ReplaceFile, LeavesALinkThatLeadsNowhereAlone)
{
    ASSERT_TRUE(QFile::link(tree.path(u"disk/a.ini"), tree.path(u"a.ini")));
    EXPECT_EQ(replaceFile(tree.path(u"a.ini"), "x"), std::errc::no_such_file_or_directory);
    EXPECT_TRUE(QFileInfo(tree.path(u"a.ini")).isSymLink());
}

TEST_F(ReplaceFile, LeavesAloneWhatCannotBeExamined)
{
    ASSERT_TRUE(QFile::link(tree.path(u"a.ini"), tree.path(u"a.ini")));
    EXPECT_EQ(replaceFile(tree.path(u"a.ini"), "x"), std::errc::too_many_symbolic_link_levels);
    EXPECT_TRUE(QFileInfo(tree.path(u"a.ini")).isSymLink());
}

} // namespace
} // namespace velmora
