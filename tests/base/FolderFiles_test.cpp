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
    EXPECT_EQ(files.modified("file"), std::optional<std::chrono::nanoseconds>(1'000s));
    EXPECT_EQ(files.modified("link"), std::optional<std::chrono::nanoseconds>(1'000s));
}

TEST(FolderFiles, HasNoTimeForWhatIsNoFile)
{
    const TempTree tree;
    tree.makeFolder(u"folder");
    const FolderFiles files(tree.path());
    EXPECT_FALSE(files.modified("folder").has_value());
    EXPECT_FALSE(files.modified("missing").has_value());
}

TEST(FolderFiles, HasNoFilesWithoutAFolder)
{
    const TempTree tree;
    EXPECT_FALSE(FolderFiles(tree.path(u"missing")).modified("file").has_value());
}

} // namespace
} // namespace velmora
