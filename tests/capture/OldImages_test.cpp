// A folder's images older than a month, where deletion meets resistance.
#include "capture/OldImages.h"

#include "base/DateText.h"
#include "support/NativeFiles.h"
#include "support/TempTree.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace velmora::test {
namespace {

const WallTime kNow = dateFromText(u"07/03/2006 14:05:09").value();
const QString kOld = QStringLiteral("20050101_0000000101.jpg");
const QString kNew = QStringLiteral("20060307_1405090714.jpg");

void work(OldImages &images)
{
    while (images.lookSome()) {
    }
    while (images.deleteSome()) {
    }
}

TEST(OldImages, CountsWhatCannotBeDeletedAndSaysWhy)
{
    const TempTree tree;
    tree.write(QStringLiteral("cam/") + kOld, "old");
    tree.write(QStringLiteral("cam/") + kNew, "new");
    const QByteArray path = QFile::encodeName(tree.path(u"cam"));
    requireSystem(::chmod(QFile::encodeName(tree.path()).constData(), 0755) == 0, path);
    requireSystem(::chmod(path.constData(), 0555) == 0, path);
    const WithoutRootRights nobody;
    const FolderFiles folder(tree.path(u"cam"), FolderLinks::Refused);
    OldImages images(folder, kNow, kNow);
    work(images);
    EXPECT_EQ(images.deleted(), 0);
    EXPECT_EQ(images.failed(), 1);
    EXPECT_EQ(images.error(), std::errc::permission_denied);
}

TEST(OldImages, CountsWhatIsDeleted)
{
    const TempTree tree;
    tree.write(QStringLiteral("cam/") + kOld, "old");
    tree.write(QStringLiteral("cam/") + kNew, "new");
    const FolderFiles folder(tree.path(u"cam"));
    OldImages images(folder, kNow, kNow);
    work(images);
    EXPECT_EQ(images.deleted(), 1);
    EXPECT_EQ(images.failed(), 0);
    EXPECT_FALSE(images.error());
    EXPECT_EQ(images.newest(), kNow);
    EXPECT_TRUE(images.isComplete());
}

TEST(OldImages, AreNotAllKnownWhenTheFolderWentAway)
{
    const TempTree tree;
    tree.makeFolder(u"cam");
    const FolderFiles folder(tree.path(u"cam"));
    ASSERT_TRUE(QDir().rmdir(tree.path(u"cam")));
    OldImages images(folder, kNow, kNow);
    EXPECT_FALSE(images.lookSome());
    EXPECT_FALSE(images.isComplete());
}

// While a folder cannot be read, its newest image is not known.
TEST(OldImages, StayWhenTheProcessMayOpenNoMoreFiles)
{
    const TempTree tree;
    tree.write(u"20010101_0000000101.jpg", "old");
    tree.write(u"20010201_0000000101.jpg", "the newest");
    const FolderFiles folder(tree.path());
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none = {0, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    OldImages images(folder, kNow, kNow);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_FALSE(images.lookSome());
    EXPECT_FALSE(images.isComplete());
    while (images.deleteSome()) {
    }
    EXPECT_EQ(tree.files().size(), 2);
}

TEST(OldImages, HaveNoNewestInAnEmptyFolder)
{
    const TempTree tree;
    const FolderFiles folder(tree.path());
    OldImages images(folder, kNow, kNow);
    work(images);
    EXPECT_FALSE(images.newest().has_value());
    EXPECT_TRUE(images.isClockPlausible());
}

} // namespace
} // namespace velmora::test
