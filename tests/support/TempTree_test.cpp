// The temporary program folder of the tests.
#include "support/TempTree.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(TempTree, GivesBackWhatWasWritten)
{
    const TempTree tree;
    const QByteArray bytes("a\0\r\n\xff", 5);
    tree.write(u"deep/down/file.bin", bytes);
    EXPECT_EQ(tree.read(u"deep/down/file.bin"), bytes);
    EXPECT_TRUE(QFileInfo(tree.path(u"deep/down")).isDir());
}

TEST(TempTree, ListsFilesSortedAndHiddenOnesToo)
{
    const TempTree tree;
    tree.write(u"b", "");
    tree.write(u".a", "");
    tree.makeFolder(u"folder");
    EXPECT_EQ(tree.files(), (QStringList{QStringLiteral(".a"), QStringLiteral("b")}));
    EXPECT_EQ(tree.folders(), QStringList{QStringLiteral("folder")});
}

TEST(TempTree, SeesABrokenLink)
{
    const TempTree tree;
    ASSERT_TRUE(QFile::link(tree.path(u"nowhere"), tree.path(u"link")));
    EXPECT_TRUE(tree.exists(u"link"));
    EXPECT_FALSE(tree.exists(u"nowhere"));
}

TEST(TempTree, ThrowsWhenAFileIsMissing)
{
    const TempTree tree;
    EXPECT_THROW(static_cast<void>(tree.read(u"missing")), std::runtime_error);
}

TEST(TempTree, LeavesNothingBehind)
{
    QString path;
    {
        const TempTree tree;
        path = tree.path();
        tree.write(u"a/b", "x");
    }
    EXPECT_FALSE(QFileInfo::exists(path));
}

} // namespace
} // namespace velmora::test
