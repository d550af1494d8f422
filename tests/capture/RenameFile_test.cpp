// Renaming without replacing, on file systems that can do it at once and on those that cannot.
#include "capture/RenameFile.h"

#include "NativeFiles.h"
#include "RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>

namespace velmora::test {
namespace {

constexpr std::time_t kDate = 1141740309;

/// The parameter is the error with which the file system refuses to rename without replacing.
class RenameFile : public testing::TestWithParam<int>
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

    TempTree tree_;
    RefusedRename refused_{GetParam()};
};

TEST_P(RenameFile, GivesTheOtherName)
{
    write("a", "picture");
    EXPECT_FALSE(renameFile(path("a"), path("b")));
    EXPECT_EQ(nativeNames(path("")), QByteArrayList{"b"});
    EXPECT_EQ(tree_.read(u"b"), "picture");
}

TEST_P(RenameFile, KeepsTheDate)
{
    write("a", "picture");
    EXPECT_FALSE(renameFile(path("a"), path("b")));
    struct stat info = {};
    ASSERT_EQ(::stat(path("b").constData(), &info), 0);
    EXPECT_EQ(info.st_mtim.tv_sec, kDate);
}

TEST_P(RenameFile, ReplacesNoFile)
{
    write("a", "mine");
    write("b", "yours");
    EXPECT_EQ(renameFile(path("a"), path("b")), std::errc::file_exists);
    EXPECT_EQ(tree_.read(u"a"), "mine");
    EXPECT_EQ(tree_.read(u"b"), "yours");
}

TEST_P(RenameFile, ReplacesNoBrokenLink)
{
    write("a", "mine");
    ASSERT_EQ(::symlink("nowhere", path("b").constData()), 0);
    EXPECT_EQ(renameFile(path("a"), path("b")), std::errc::file_exists);
    EXPECT_EQ(nativeNames(path("")), (QByteArrayList{"a", "b"}));
}

TEST_P(RenameFile, RenamesALinkAsALink)
{
    write("picture", "x");
    ASSERT_EQ(::symlink("picture", path("a").constData()), 0);
    EXPECT_FALSE(renameFile(path("a"), path("b")));
    EXPECT_EQ(nativeNames(path("")), (QByteArrayList{"b", "picture"}));
    EXPECT_EQ(QFile::symLinkTarget(tree_.path(u"b")), tree_.path(u"picture"));
}

TEST_P(RenameFile, SaysThatTheFileIsMissing)
{
    EXPECT_EQ(renameFile(path("a"), path("b")), std::errc::no_such_file_or_directory);
}

INSTANTIATE_TEST_SUITE_P(FileSystems, RenameFile, testing::Values(0, EINVAL, ENOSYS),
                         [](const auto &info) {
                             return info.param == 0        ? "RenamesItself"
                                    : info.param == EINVAL ? "RefusesTheFlag"
                                                           : "KnowsNoSuchCall";
                         });

using RenameByLink = RenameFile;

TEST_P(RenameByLink, LeavesTheFileAsItWasWhenTheOldNameCannotGo)
{
    write("a", "picture");
    const RefusedUnlink refused(EPERM);
    EXPECT_EQ(renameFile(path("a"), path("b")), std::errc::operation_not_permitted);
    EXPECT_EQ(nativeNames(path("")), QByteArrayList{"a"});
}

INSTANTIATE_TEST_SUITE_P(FileSystems, RenameByLink, testing::Values(EINVAL));

TEST(RenameRefused, ForAnotherReasonIsNotTriedByLink)
{
    const TempTree tree;
    const QByteArray folder = QFile::encodeName(tree.path());
    writeNative(folder + "/a", "x", kDate);
    const RefusedRename refused(EACCES);
    EXPECT_EQ(renameFile(folder + "/a", folder + "/b"), std::errc::permission_denied);
    EXPECT_EQ(nativeNames(folder), QByteArrayList{"a"});
}

} // namespace
} // namespace velmora::test
