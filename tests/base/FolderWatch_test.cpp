// Watching folders: what counts as a change, and when a folder is not watched at all.
#include "base/FolderWatch.h"

#include "support/FolderChanges.h"
#include "support/TempTree.h"

#include <QDir>

#include <gtest/gtest.h>

#include <functional>

namespace velmora {
namespace {

using namespace std::chrono_literals;

class FolderWatchTest : public testing::Test
{
protected:
    FolderWatchTest()
    {
        tree.write(u"cam/image", "a");
        tree.makeFolder(u"other");
    }

    [[nodiscard]] QString folder() const { return tree.path(u"cam"); }

    FolderWatch watch;
    test::TempTree tree;
};

TEST_F(FolderWatchTest, IsQuietWhileNothingHappens)
{
    const FolderWatch::Ticket ticket = watch.begin(folder());
    ASSERT_NE(ticket, 0U);
    EXPECT_TRUE(watch.confirmQuiet(folder(), ticket));
    tree.write(u"other/image", "b");
    EXPECT_EQ(tree.read(u"cam/image"), QByteArray("a"));
    EXPECT_TRUE(watch.confirmQuiet(folder(), ticket));
}

TEST_F(FolderWatchTest, IsNotQuietBeforeItBegan)
{
    EXPECT_FALSE(watch.confirmQuiet(folder(), 0));
    EXPECT_FALSE(watch.confirmQuiet(folder(), 1));
}

struct Change
{
    const char *what;
    std::function<void(const test::TempTree &)> make;
};

class FolderChange : public testing::TestWithParam<Change>
{
};

TEST_P(FolderChange, IsReported)
{
    test::TempTree tree;
    tree.write(u"cam/image", "a");
    tree.write(u"cam/second", "a");
    FolderWatch watch;
    const FolderWatch::Ticket ticket = watch.begin(tree.path(u"cam"));
    GetParam().make(tree);
    EXPECT_FALSE(watch.confirmQuiet(tree.path(u"cam"), ticket));
    EXPECT_FALSE(watch.confirmQuiet(tree.path(u"cam"), ticket)) << "once changed, always changed";
}

void rename(const test::TempTree &tree, const QString &from, const QString &to)
{
    test::check(QDir().rename(tree.path(from), tree.path(to)), "nothing was renamed");
}

const Change kChanges[] = {
    {"AFileThatComes", [](const auto &tree) { test::makeFile(tree.path(u"cam"), "new"); }},
    {"AFileThatGoes", [](const auto &tree) { QFile::remove(tree.path(u"cam/image")); }},
    {"AFileWrittenInPlace",
     [](const auto &tree) {
         QFile file(tree.path(u"cam/image"));
         test::check(file.open(QIODevice::ReadWrite), "no file");
         file.write("b");
     }},
    {"AFilesTime", [](const auto &tree) { test::setModified(tree.path(u"cam/image"), 1000s); }},
    {"AFilesName",
     [](const auto &tree) { rename(tree, QStringLiteral("cam/image"), QStringLiteral("cam/x")); }},
    {"AFileMovedAway",
     [](const auto &tree) { rename(tree, QStringLiteral("cam/image"), QStringLiteral("x")); }},
    {"AFolderMoved",
     [](const auto &tree) { rename(tree, QStringLiteral("cam"), QStringLiteral("moved")); }},
    {"AFolderDeleted", [](const auto &tree) { QDir(tree.path(u"cam")).removeRecursively(); }},
};
INSTANTIATE_TEST_SUITE_P(Watched, FolderChange, testing::ValuesIn(kChanges),
                         [](const auto &row) { return row.param.what; });

TEST_F(FolderWatchTest, ANewBeginningEndsTheOneBefore)
{
    const FolderWatch::Ticket first = watch.begin(folder());
    test::makeFile(folder(), "new");
    const FolderWatch::Ticket second = watch.begin(folder());
    EXPECT_FALSE(watch.confirmQuiet(folder(), first));
    EXPECT_TRUE(watch.confirmQuiet(folder(), second));
}

TEST_F(FolderWatchTest, AFolderByTwoPathsChangesForBoth)
{
    ASSERT_TRUE(QFile::link(folder(), tree.path(u"link")));
    const FolderWatch::Ticket one = watch.begin(folder());
    const FolderWatch::Ticket two = watch.begin(tree.path(u"link"));
    test::makeFile(folder(), "new");
    EXPECT_FALSE(watch.confirmQuiet(folder(), one));
    EXPECT_FALSE(watch.confirmQuiet(tree.path(u"link"), two));
}

TEST_F(FolderWatchTest, AMissingFolderIsNotWatched)
{
    EXPECT_EQ(watch.begin(tree.path(u"missing")), 0U);
    EXPECT_EQ(watch.begin(tree.path(u"cam/image")), 0U);
}

TEST_F(FolderWatchTest, AFileSystemThatDoesNotReportIsNotWatched)
{
    EXPECT_EQ(watch.begin(QStringLiteral("/proc")), 0U);
}

TEST_F(FolderWatchTest, ManyFoldersMakeRoomForAnother)
{
    std::vector<FolderWatch::Ticket> tickets;
    const auto path = [this](int i) { return tree.path(QStringLiteral("many/%1").arg(i)); };
    for (int i = 0; i < 300; ++i) {
        tree.makeFolder(QStringLiteral("many/%1").arg(i));
        tickets.push_back(watch.begin(path(i)));
        ASSERT_TRUE(watch.confirmQuiet(path(i), tickets.back())) << i;
    }
    test::makeFile(path(299), "new");
    EXPECT_FALSE(watch.confirmQuiet(path(299), tickets.back()));
    EXPECT_FALSE(watch.confirmQuiet(path(0), tickets.front()));
}

} // namespace
} // namespace velmora
