// A file gets only a name that is not in use, on file systems that can do so at once and on those
// that cannot.
#include "base/NewName.h"

#include "base/UniqueFd.h"
#include "support/NativeFiles.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/file.h>

namespace velmora::test {
namespace {

constexpr std::time_t kDate = 1141740309;

/// How a file system refuses, 0 for not at all.
struct FileSystemRow
{
    const char *name;
    int renameError;
    int linkError;
};

void PrintTo(const FileSystemRow &row, std::ostream *out)
{
    *out << row.name;
}

class RenameToNew : public testing::TestWithParam<FileSystemRow>
{
protected:
    [[nodiscard]] QByteArray path(const char *name) const
    {
        return QFile::encodeName(tree_.path()) + '/' + name;
    }

    void write(const char *name, const QByteArray &bytes) const
    {
        writeNative(path(name), bytes, kDate);
    }

    void giveSecondName(const char *name, const char *second) const
    {
        ASSERT_EQ(::linkat(AT_FDCWD, path(name).constData(), AT_FDCWD, path(second).constData(), 0),
                  0);
    }

    TempTree tree_;
    RefusedCall rename_{Call::RenameToNew, GetParam().renameError};
    RefusedCall link_{Call::Link, GetParam().linkError};
};

TEST_P(RenameToNew, GivesTheOtherName)
{
    write("a", "picture");
    EXPECT_FALSE(renameToNew(path("a"), path("b")));
    EXPECT_EQ(nativeNames(path("")), QByteArrayList{"b"});
    EXPECT_EQ(tree_.read(u"b"), "picture");
}

TEST_P(RenameToNew, KeepsTheDate)
{
    write("a", "picture");
    EXPECT_FALSE(renameToNew(path("a"), path("b")));
    struct stat info = {};
    ASSERT_EQ(::stat(path("b").constData(), &info), 0);
    EXPECT_EQ(info.st_mtim.tv_sec, kDate);
}

TEST_P(RenameToNew, ReplacesNoFile)
{
    write("a", "mine");
    write("b", "yours");
    EXPECT_EQ(renameToNew(path("a"), path("b")), std::errc::file_exists);
    EXPECT_EQ(tree_.read(u"a"), "mine");
    EXPECT_EQ(tree_.read(u"b"), "yours");
}

TEST_P(RenameToNew, ReplacesNoOtherNameOfTheFileItself)
{
    write("a", "mine");
    giveSecondName("a", "b");
    giveSecondName("a", "c");
    EXPECT_EQ(renameToNew(path("a"), path("b")), std::errc::file_exists);
    EXPECT_EQ(nativeNames(path("")), (QByteArrayList{"a", "b", "c"}));
}

TEST_P(RenameToNew, ReplacesNoBrokenLink)
{
    write("a", "mine");
    ASSERT_EQ(::symlink("nowhere", path("b").constData()), 0);
    EXPECT_EQ(renameToNew(path("a"), path("b")), std::errc::file_exists);
    EXPECT_EQ(nativeNames(path("")), (QByteArrayList{"a", "b"}));
}

TEST_P(RenameToNew, ReplacesNoFolder)
{
    write("a", "mine");
    tree_.makeFolder(u"b");
    EXPECT_EQ(renameToNew(path("a"), path("b")), std::errc::file_exists);
    EXPECT_EQ(tree_.read(u"a"), "mine");
}

TEST_P(RenameToNew, RenamesALinkAsALink)
{
    write("picture", "x");
    ASSERT_EQ(::symlink("picture", path("a").constData()), 0);
    EXPECT_FALSE(renameToNew(path("a"), path("b")));
    EXPECT_EQ(nativeNames(path("")), (QByteArrayList{"b", "picture"}));
    EXPECT_EQ(QFile::symLinkTarget(tree_.path(u"b")), tree_.path(u"picture"));
}

TEST_P(RenameToNew, SaysThatTheFileIsMissing)
{
    EXPECT_EQ(renameToNew(path("a"), path("b")), std::errc::no_such_file_or_directory);
}

TEST_P(RenameToNew, SaysThatTheFolderIsMissing)
{
    write("a", "x");
    EXPECT_EQ(renameToNew(path("a"), path("c/b")), std::errc::no_such_file_or_directory);
    EXPECT_EQ(tree_.read(u"a"), "x");
}

TEST_P(RenameToNew, SaysThatTheNameIsTooLong)
{
    write("a", "x");
    EXPECT_EQ(renameToNew(path("a"), path(QByteArray(256, 'n').constData())),
              std::errc::filename_too_long);
    EXPECT_EQ(tree_.read(u"a"), "x");
}

const FileSystemRow kFileSystems[] = {
    {"RenamesItself", 0, 0},
    {"RefusesTheFlag", EINVAL, 0},               // NFS, older FUSE
    {"KnowsNoSuchCall", ENOSYS, 0},              // old kernels, emulations
    {"DoesNotSupportIt", EOPNOTSUPP, 0},         //
    {"PermitsNeither", EPERM, EPERM},            // FAT by way of FUSE, some CIFS
    {"KnowsNoSecondNames", EINVAL, EOPNOTSUPP},  // CIFS without the Unix extensions
    {"KnowsNeitherCall", ENOSYS, ENOSYS},        // simple FUSE programs
    {"HasNoRoomForASecondName", EINVAL, EMLINK}, //
};

INSTANTIATE_TEST_SUITE_P(FileSystems, RenameToNew, testing::ValuesIn(kFileSystems),
                         [](const auto &info) { return std::string(info.param.name); });

using RenameByLink = RenameToNew;

TEST_P(RenameByLink, LeavesTheFileAsItWasWhenTheOldNameCannotGo)
{
    write("a", "picture");
    const RefusedCall refused(Call::Unlink, EACCES, 1);
    EXPECT_EQ(renameToNew(path("a"), path("b")), std::errc::permission_denied);
    EXPECT_EQ(nativeNames(path("")), QByteArrayList{"a"});
}

TEST_P(RenameByLink, FinishesWhatAKilledRunBegan)
{
    write("a", "picture");
    giveSecondName("a", "b");
    EXPECT_FALSE(renameToNew(path("a"), path("b")));
    EXPECT_EQ(nativeNames(path("")), QByteArrayList{"b"});
    EXPECT_EQ(tree_.read(u"b"), "picture");
}

INSTANTIATE_TEST_SUITE_P(FileSystems, RenameByLink,
                         testing::Values(FileSystemRow{"ByLink", EINVAL, 0}),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(RenameRefused, ForAnotherReasonIsNotTriedByLink)
{
    const TempTree tree;
    const QByteArray folder = QFile::encodeName(tree.path());
    writeNative(folder + "/a", "x", kDate);
    const RefusedCall refused(Call::RenameToNew, EACCES);
    EXPECT_EQ(renameToNew(folder + "/a", folder + "/b"), std::errc::permission_denied);
    EXPECT_EQ(nativeNames(folder), QByteArrayList{"a"});
}

TEST(RenameAfterALook, WorksWithoutLocksToo)
{
    const TempTree tree;
    const QByteArray folder = QFile::encodeName(tree.path());
    writeNative(folder + "/a", "x", kDate);
    const RefusedCall rename(Call::RenameToNew, ENOSYS);
    const RefusedCall link(Call::Link, ENOSYS);
    const RefusedCall lock(Call::Lock, ENOLCK);
    EXPECT_FALSE(renameToNew(folder + "/a", folder + "/b"));
    EXPECT_EQ(nativeNames(folder), QByteArrayList{"b"});
}

// Any program that may read a folder may lock it, and keep the lock.
TEST(RenameAfterALook, WaitsForNoOtherProgramsLock)
{
    const TempTree tree;
    const QByteArray folder = QFile::encodeName(tree.path());
    writeNative(folder + "/a", "x", kDate);
    writeNative(folder + "/c", "y", kDate);
    const UniqueFd other(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(::flock(other.get(), LOCK_EX), 0);
    const RefusedCall rename(Call::RenameToNew, ENOSYS);
    const RefusedCall link(Call::Link, ENOSYS);
    EXPECT_FALSE(renameToNew(folder + "/a", folder + "/b"));
    EXPECT_EQ(renameToNew(folder + "/c", folder + "/b"), std::errc::file_exists);
    EXPECT_EQ(nativeNames(folder), (QByteArrayList{"b", "c"}));
}

/// A file without a name, and how the system refuses to name it.
class LinkToNew : public testing::TestWithParam<int>
{
protected:
    [[nodiscard]] QByteArray path(const char *name) const
    {
        return QFile::encodeName(tree_.path()) + '/' + name;
    }

    TempTree tree_;
    UniqueFd file_{::open(path("").constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0644)};
    RefusedCall refused_{Call::LinkHandle, GetParam()};
};

TEST_P(LinkToNew, GivesTheFirstName)
{
    ASSERT_EQ(::write(file_.get(), "x", 1), 1);
    EXPECT_FALSE(linkToNew(file_.get(), path("a")));
    EXPECT_EQ(tree_.read(u"a"), "x");
}

TEST_P(LinkToNew, ReplacesNoFile)
{
    tree_.write(u"a", "old");
    EXPECT_EQ(linkToNew(file_.get(), path("a")), std::errc::file_exists);
    EXPECT_EQ(tree_.read(u"a"), "old");
}

TEST_P(LinkToNew, SaysThatTheFolderIsMissing)
{
    EXPECT_EQ(linkToNew(file_.get(), path("c/a")), std::errc::no_such_file_or_directory);
}

INSTANTIATE_TEST_SUITE_P(Systems, LinkToNew, testing::Values(0, ENOENT, EPERM),
                         [](const auto &info) {
                             return info.param == 0        ? "ByHandle"
                                    : info.param == ENOENT ? "ByHandleForAdministratorsAlone"
                                                           : "ByHandleNotPermitted";
                         });

TEST(FolderOf, IsWhatStandsBeforeTheLastSlash)
{
    EXPECT_EQ(folderOf("/a/b"), "/a");
    EXPECT_EQ(folderOf("/a"), "/");
    EXPECT_EQ(folderOf("a/b"), "a");
    EXPECT_EQ(folderOf("a"), ".");
}

} // namespace
} // namespace velmora::test
