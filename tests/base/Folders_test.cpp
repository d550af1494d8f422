// Folders of the file system: whether they exist, whether they hold a file, and how one is made.
#include "base/Folders.h"

#include "support/RefusedCalls.h"
#include "support/TempTree.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace velmora {
namespace {

using test::TempTree;

class Folders : public testing::Test
{
protected:
    void link(QStringView target, QStringView name) const
    {
        ASSERT_TRUE(QFile::link(tree.path(target), tree.path(name)));
    }

    TempTree tree;
};

TEST_F(Folders, FindsAFolderAndALinkToOne)
{
    tree.makeFolder(u"here");
    link(u"here", u"link");
    EXPECT_TRUE(folderExists(tree.path(u"here")));
    EXPECT_TRUE(folderExists(tree.path(u"here/")));
    EXPECT_TRUE(folderExists(tree.path(u"link")));
}

TEST_F(Folders, AreTheSameBehindALink)
{
    tree.makeFolder(u"here");
    link(u"here", u"link");
    EXPECT_TRUE(isSameFolder(tree.path(u"link"), tree.path(u"here")));
}

TEST_F(Folders, AreTheSameUnderTheSameNameThoughTheyCannotBeSeen)
{
    EXPECT_TRUE(isSameFolder(tree.path(u"gone"), tree.path(u"gone")));
}

TEST_F(Folders, AreNotTheSameUnderOtherNames)
{
    tree.makeFolder(u"here");
    tree.makeFolder(u"Here");
    tree.makeFolder(u"there");
    EXPECT_FALSE(isSameFolder(tree.path(u"here"), tree.path(u"there")));
    EXPECT_FALSE(isSameFolder(tree.path(u"here"), tree.path(u"Here")));
    EXPECT_FALSE(isSameFolder(tree.path(u"here"), tree.path(u"HERE")));
}

TEST_F(Folders, FindsAFolderWhoseNameIsNotAscii)
{
    tree.makeFolder(u"d\u00e9p\u00f4t \u4e2d");
    EXPECT_TRUE(folderExists(tree.path(u"d\u00e9p\u00f4t \u4e2d")));
}

TEST_F(Folders, TakesNothingElseForAFolder)
{
    tree.write(u"file", "x");
    link(u"file", u"fileLink");
    link(u"nowhere", u"broken");
    for (const char16_t *const name : {u"file", u"fileLink", u"broken", u"missing"}) {
        SCOPED_TRACE(QString::fromUtf16(name).toStdString());
        EXPECT_FALSE(folderExists(tree.path(name)));
    }
    EXPECT_FALSE(folderExists(QString()));
}

TEST_F(Folders, MakesOneLevel)
{
    EXPECT_FALSE(makeFolder(tree.path(u"new")));
    EXPECT_TRUE(QFileInfo(tree.path(u"new")).isDir());
}

TEST_F(Folders, MakesNoSecondLevel)
{
    EXPECT_EQ(makeFolder(tree.path(u"a/b")), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(tree.exists(u"a"));
}

TEST_F(Folders, TakesAFolderThatExistsAsMade)
{
    tree.write(u"here/file", "x");
    link(u"here", u"link");
    EXPECT_FALSE(makeFolder(tree.path(u"here")));
    EXPECT_FALSE(makeFolder(tree.path(u"link")));
    EXPECT_EQ(tree.read(u"here/file"), QByteArray("x"));
}

TEST_F(Folders, FailsWhereAFileStands)
{
    tree.write(u"file", "x");
    EXPECT_EQ(makeFolder(tree.path(u"file")), std::errc::file_exists);
    EXPECT_EQ(makeFolder(tree.path(u"file/new")), std::errc::not_a_directory);
}

TEST_F(Folders, HoldsAFile)
{
    tree.write(u"one/file", "");
    tree.write(u"hidden/.file", "");
    tree.makeFolder(u"linked");
    link(u"one/file", u"linked/link");
    EXPECT_TRUE(folderMayHoldFile(tree.path(u"one")));
    EXPECT_TRUE(folderMayHoldFile(tree.path(u"hidden")));
    EXPECT_TRUE(folderMayHoldFile(tree.path(u"linked")));
}

TEST_F(Folders, HoldsNoFile)
{
    tree.makeFolder(u"empty");
    tree.makeFolder(u"folders/below");
    tree.write(u"folders/below/file", "");
    tree.makeFolder(u"broken");
    link(u"nowhere", u"broken/link");
    tree.makeFolder(u"linked");
    link(u"empty", u"linked/folder");
    tree.makeFolder(u"pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(tree.path(u"pipe/p")).constData(), 0600), 0);
    tree.write(u"file", "");
    for (const char16_t *const name :
         {u"empty", u"folders", u"broken", u"linked", u"pipe", u"file", u"missing"}) {
        SCOPED_TRACE(QString::fromUtf16(name).toStdString());
        EXPECT_FALSE(folderMayHoldFile(tree.path(name)));
    }
}

TEST_F(Folders, MayHoldAFileThatCannotBeSeen)
{
    tree.makeFolder(u"empty");
    const test::RefusedCall failing(test::Call::ReadFolder, EIO);
    EXPECT_TRUE(folderMayHoldFile(tree.path(u"empty")));
    EXPECT_FALSE(folderMayHoldFile(tree.path(u"missing")));
}

TEST_F(Folders, FindsTheOneFileAmongHundredsOfFolders)
{
    const QString longName = QStringLiteral("much/folder-with-a-rather-long-name-%1");
    for (int i = 0; i < 300; ++i) {
        tree.makeFolder(longName.arg(i));
    }
    EXPECT_FALSE(folderMayHoldFile(tree.path(u"much")));
    tree.write(u"much/the file", "");
    EXPECT_TRUE(folderMayHoldFile(tree.path(u"much")));
}

TEST_F(Folders, FindsAFileOfTheLongestName)
{
    tree.write(QStringLiteral("long/") + QString(255, u'n'), "");
    EXPECT_TRUE(folderMayHoldFile(tree.path(u"long")));
}

} // namespace
} // namespace velmora
