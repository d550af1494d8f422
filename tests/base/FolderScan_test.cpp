// Reading a folder in pieces: which entries count, names of all kinds, and where it ends.
#include "base/FolderScan.h"

#include "support/FolderChanges.h"
#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QByteArrayList>
#include <QDir>

#include <gtest/gtest.h>

#include <algorithm>

namespace velmora {
namespace {

using test::makeFile;
using test::TempTree;

struct Read
{
    QByteArrayList names; // sorted
    int pieces = 0;
};

Read readAll(FolderScan &scan)
{
    Read read;
    while (scan.readSome([&read](QByteArrayView name) { read.names += name.toByteArray(); })) {
        ++read.pieces;
    }
    std::ranges::sort(read.names);
    return read;
}

QByteArrayList namesIn(const QString &path)
{
    FolderScan scan(path);
    return readAll(scan).names;
}

TEST(FolderScan, VisitsFilesOfAnyName)
{
    const TempTree tree;
    QByteArrayList names = {"a",
                            "ab",
                            "abc",
                            "abcd",
                            "abcde",
                            "abcdef",
                            ".hidden",
                            "two\nlines",
                            "blank .jpg",
                            "d\xC3\xA9p.jpg",
                            "no\xFFtext",
                            QByteArray(255, 'x'),
                            "20061005_1230450001.jpg"};
    for (const QByteArray &name : names) {
        makeFile(tree.path(), name);
    }
    std::ranges::sort(names);
    EXPECT_EQ(namesIn(tree.path()), names);
    test::removeFile(tree.path(), "no\xFFtext");
}

TEST(FolderScan, VisitsNamesOfEveryLength)
{
    const TempTree tree;
    QByteArrayList names;
    for (int length = 1; length <= 255; ++length) {
        names.append(QByteArray(length, 'x'));
        makeFile(tree.path(), names.last());
    }
    EXPECT_EQ(namesIn(tree.path()), names);
}

TEST(FolderScan, CountsFilesAndLinksToFilesAlone)
{
    const TempTree tree;
    tree.write(u"in/file", "x");
    tree.makeFolder(u"in/folder");
    ASSERT_EQ(::mkfifo(QFile::encodeName(tree.path(u"in/pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(tree.path(u"in/file"), tree.path(u"in/toFile")));
    ASSERT_TRUE(QFile::link(tree.path(u"in/folder"), tree.path(u"in/toFolder")));
    ASSERT_TRUE(QFile::link(tree.path(u"nowhere"), tree.path(u"in/toNothing")));
    EXPECT_EQ(namesIn(tree.path(u"in")), QByteArrayList({"file", "toFile"}));
}

TEST(FolderScan, CountsFoldersAndLinksToFoldersAlone)
{
    const TempTree tree;
    tree.write(u"in/file", "x");
    tree.makeFolder(u"in/folder");
    tree.makeFolder(u"in/.hidden");
    ASSERT_EQ(::mkfifo(QFile::encodeName(tree.path(u"in/pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(tree.path(u"in/file"), tree.path(u"in/toFile")));
    ASSERT_TRUE(QFile::link(tree.path(u"in/folder"), tree.path(u"in/toFolder")));
    ASSERT_TRUE(QFile::link(tree.path(u"nowhere"), tree.path(u"in/toNothing")));
    FolderScan scan(tree.path(u"in"));
    QByteArrayList names;
    while (scan.readSomeFolders([&](QByteArrayView name) { names += name.toByteArray(); })) {
    }
    std::ranges::sort(names);
    EXPECT_EQ(names, QByteArrayList({".hidden", "folder", "toFolder"}));
}

TEST(FolderScan, CountsEntriesOfEveryKindButTheFolderItselfAndTheOneAbove)
{
    const TempTree tree;
    tree.write(u"in/.file", "x");
    tree.makeFolder(u"in/folder");
    ASSERT_EQ(::mkfifo(QFile::encodeName(tree.path(u"in/pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(tree.path(u"nowhere"), tree.path(u"in/toNothing")));
    FolderScan scan(tree.path(u"in"));
    QByteArrayList names;
    while (scan.readSomeEntries([&](QByteArrayView name) { names += name.toByteArray(); })) {
    }
    std::ranges::sort(names);
    EXPECT_EQ(names, QByteArrayList({".file", "folder", "pipe", "toNothing"}));
}

TEST(FolderScan, ReadsAFullFolderInPieces)
{
    const TempTree tree;
    test::makeImages(tree.path(), 3000);
    FolderScan scan(tree.path());
    const Read read = readAll(scan);
    EXPECT_EQ(read.names.size(), 3000);
    EXPECT_EQ(std::ranges::adjacent_find(read.names), read.names.end());
    EXPECT_GE(read.pieces, 4);
    EXPECT_FALSE(scan.hasFailed());
}

TEST(FolderScan, FollowsOnlySomeLinksInAPiece)
{
    const TempTree tree;
    tree.write(u"file", "x");
    tree.makeFolder(u"in");
    for (int i = 0; i < 300; ++i) {
        ASSERT_TRUE(QFile::link(tree.path(u"file"), tree.path(u"in") + u'/' + QString::number(i)));
    }
    FolderScan scan(tree.path(u"in"));
    const Read read = readAll(scan);
    EXPECT_EQ(read.names.size(), 300);
    EXPECT_GE(read.pieces, 3);
}

TEST(FolderScan, IsAtItsEndWithoutAFolder)
{
    const TempTree tree;
    tree.write(u"file", "x");
    for (const char16_t *const name : {u"missing", u"file"}) {
        FolderScan scan(tree.path(name));
        EXPECT_FALSE(scan.isOpen());
        EXPECT_TRUE(readAll(scan).names.isEmpty());
        EXPECT_FALSE(scan.error());
    }
}

TEST(FolderScan, IsAtItsEndWithoutTheRightToRead)
{
    const TempTree tree;
    tree.write(u"in/file", "x");
    test::setRights(tree.path(), 0755);
    test::setRights(tree.path(u"in"), 0);
    {
        const test::RightsOfNobody rights;
        FolderScan scan(tree.path(u"in"));
        EXPECT_FALSE(scan.isOpen());
        EXPECT_TRUE(readAll(scan).names.isEmpty());
        EXPECT_EQ(scan.error(), std::errc::permission_denied);
    }
    test::setRights(tree.path(u"in"), 0700);
}

TEST(FolderScan, TellsWhenTheFolderWentAway)
{
    const TempTree tree;
    tree.makeFolder(u"in");
    FolderScan scan(tree.path(u"in"));
    ASSERT_TRUE(QDir(tree.path(u"in")).removeRecursively());
    EXPECT_TRUE(readAll(scan).names.isEmpty());
    EXPECT_TRUE(scan.hasFailed());
}

TEST(FolderScan, TellsWhyItEndedBeforeTheFolder)
{
    const TempTree tree;
    test::makeImages(tree.path(), 3000);
    const test::RefusedCall failing(test::Call::ReadFolder, EIO, 1, 1);
    FolderScan scan(tree.path());
    const Read read = readAll(scan);
    EXPECT_GT(read.names.size(), 0);
    EXPECT_LT(read.names.size(), 3000);
    EXPECT_EQ(scan.error(), std::errc::io_error);
}

} // namespace
} // namespace velmora
