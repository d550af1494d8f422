// Whether a folder has changed, and whether that can be known.
#include "base/FileStamp.h"

#include "base/UniqueFd.h"
#include "support/FolderChanges.h"
#include "support/TempTree.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <fcntl.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::TempTree;

constexpr std::chrono::nanoseconds kChange = 1'000'000s + 123ms;
constexpr std::chrono::nanoseconds kWholeSecond = 1'000'000s;

FileStamp changedAt(std::chrono::nanoseconds time)
{
    return {1, 2, 3, time, time};
}

TEST(FileStamp, StaysWhileNothingChanges)
{
    const TempTree tree;
    tree.write(u"file", "x");
    EXPECT_TRUE(folderStamp(tree.path()).has_value());
    EXPECT_EQ(folderStamp(tree.path()), folderStamp(tree.path()));
}

TEST(FileStamp, IsThatOfTheFolderALinkLeadsTo)
{
    const TempTree tree;
    tree.makeFolder(u"in");
    ASSERT_TRUE(QFile::link(tree.path(u"in"), tree.path(u"link")));
    EXPECT_EQ(folderStamp(tree.path(u"link")), folderStamp(tree.path(u"in")));
}

TEST(FileStamp, DiffersForAnotherFolderOfTheSameName)
{
    const TempTree tree;
    tree.makeFolder(u"in");
    const auto before = folderStamp(tree.path(u"in"));
    ASSERT_TRUE(QDir().rename(tree.path(u"in"), tree.path(u"away")));
    tree.makeFolder(u"in");
    EXPECT_NE(folderStamp(tree.path(u"in")), before);
}

TEST(FileStamp, IsThereForFoldersOnly)
{
    const TempTree tree;
    tree.write(u"file", "x");
    EXPECT_FALSE(folderStamp(tree.path(u"file")).has_value());
    EXPECT_FALSE(folderStamp(tree.path(u"missing")).has_value());
    EXPECT_FALSE(folderStamp(QString()).has_value());
}

TEST(FileStamp, OfAnOpenFileIsThatOfItsPath)
{
    const TempTree tree;
    tree.write(u"file", "x");
    const auto open = [](const QString &path) {
        return UniqueFd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
    };
    EXPECT_EQ(fileStamp(open(tree.path(u"file")).get()), fileStamp(tree.path(u"file")));
    EXPECT_EQ(fileStamp(open(tree.path()).get()), std::nullopt);
    EXPECT_EQ(fileStamp(-1), std::nullopt);
}

TEST(TellsChanges, OfAFolderAtRestSinceSomeTicks)
{
    EXPECT_TRUE(tellsChanges(changedAt(kChange), kChange + 101ms));
    EXPECT_FALSE(tellsChanges(changedAt(kChange), kChange + 100ms));
    EXPECT_FALSE(tellsChanges(changedAt(kChange), kChange));
}

TEST(TellsChanges, LaterWhereTimesAreWholeSeconds)
{
    EXPECT_TRUE(tellsChanges(changedAt(kWholeSecond), kWholeSecond + 2001ms));
    EXPECT_FALSE(tellsChanges(changedAt(kWholeSecond), kWholeSecond + 2000ms));
}

TEST(TellsChanges, NotOfAFolderFromTheFuture)
{
    EXPECT_FALSE(tellsChanges(changedAt(kChange + 3600s), kChange));
}

TEST(TellsChanges, ByTheLaterOfBothTimes)
{
    EXPECT_FALSE(tellsChanges({1, 2, 3, kChange, kChange + 1h}, kChange + 1h));
    EXPECT_FALSE(tellsChanges({1, 2, 3, kChange + 1h, kChange}, kChange + 1h));
}

} // namespace
} // namespace velmora
