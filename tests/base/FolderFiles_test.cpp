// Times of single files of an open folder.
#include "base/FolderFiles.h"

#include "support/FolderChanges.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::TempTree;

TEST(FolderFiles, GivesTheModificationTime)
{
    const TempTree tree;
    tree.write(u"file", "x");
    test::setModified(tree.path(u"file"), 1'000s);
    ASSERT_TRUE(QFile::link(tree.path(u"file"), tree.path(u"link")));
    const FolderFiles files(tree.path());
    EXPECT_EQ(files.time("file").modified, std::optional<std::chrono::nanoseconds>(1'000s));
    EXPECT_EQ(files.time("link").modified, std::optional<std::chrono::nanoseconds>(1'000s));
    EXPECT_FALSE(files.time("file").isLink);
    EXPECT_TRUE(files.time("link").isLink);
}

TEST(FolderFiles, HasNoTimeForWhatIsNoFile)
{
    const TempTree tree;
    tree.makeFolder(u"folder");
    const FolderFiles files(tree.path());
    EXPECT_FALSE(files.time("folder").modified.has_value());
    EXPECT_FALSE(files.time("missing").modified.has_value());
}

TEST(FolderFiles, HasNoFilesWithoutAFolder)
{
    const TempTree tree;
    EXPECT_FALSE(FolderFiles(tree.path(u"missing")).time("file").modified.has_value());
}

TEST(FolderFiles, RefusesAFolderThatIsALinkWhenAskedTo)
{
    const TempTree tree;
    tree.makeFolder(u"folder");
    ASSERT_TRUE(QFile::link(tree.path(u"folder"), tree.path(u"link")));
    EXPECT_TRUE(FolderFiles(tree.path(u"link")).isOpen());
    EXPECT_FALSE(FolderFiles(tree.path(u"link"), FolderLinks::Refused).isOpen());
    EXPECT_TRUE(FolderFiles(tree.path(u"folder"), FolderLinks::Refused).isOpen());
    EXPECT_FALSE(FolderFiles(tree.path(u"missing"), FolderLinks::Refused).isOpen());
}

TEST(FolderFiles, ScansTheFolderThatWasOpenedWhateverItsNameIsNow)
{
    const TempTree tree;
    tree.write(u"folder/file", "x");
    const FolderFiles files(tree.path(u"folder"));
    ASSERT_TRUE(QFile::rename(tree.path(u"folder"), tree.path(u"other")));
    QByteArrayList names;
    FolderScan scan = files.scan();
    while (scan.readSome([&names](QByteArrayView name) { names.append(name.toByteArray()); })) {
    }
    EXPECT_EQ(names, QByteArrayList({"file"}));
}

TEST(FolderFiles, ScansNothingWithoutAFolder)
{
    const TempTree tree;
    EXPECT_FALSE(FolderFiles(tree.path(u"missing")).scan().isOpen());
}

TEST(FolderFiles, RemovesAFile)
{
    const TempTree tree;
    tree.write(u"file", "x");
    tree.write(u"other", "x");
    EXPECT_FALSE(FolderFiles(tree.path()).remove("file"));
    EXPECT_EQ(tree.files(), QStringList({QStringLiteral("other")}));
}

TEST(FolderFiles, RemovesNothingButFiles)
{
    const TempTree tree;
    tree.makeFolder(u"folder");
    tree.write(u"target", "x");
    ASSERT_TRUE(QFile::link(tree.path(u"target"), tree.path(u"link")));
    const FolderFiles files(tree.path());
    EXPECT_TRUE(files.remove("folder"));
    EXPECT_TRUE(files.remove("link"));
    EXPECT_EQ(files.remove("missing"), std::errc::no_such_file_or_directory);
    EXPECT_TRUE(tree.exists(u"folder"));
    EXPECT_TRUE(tree.exists(u"link"));
    EXPECT_TRUE(tree.exists(u"target"));
}

} // namespace
} // namespace velmora
