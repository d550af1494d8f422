// What is kept of the most recently used folders.
#include "browser/RecentFolders.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct Thing
{
    std::size_t size = 0;

    [[nodiscard]] std::size_t bytes() const { return size; }
};

constexpr FileStamp kStamp{1, 2, 3, {}, {}};
constexpr FileStamp kOther{1, 2, 4, {}, {}};

QString folder(int number)
{
    return QString::number(number);
}

void keep(RecentFolders<Thing> &folders, int number, std::size_t bytes = 1)
{
    folders.keep(folder(number), kStamp, std::make_shared<const Thing>(Thing{bytes}));
}

TEST(RecentFolders, FindsWhatWasKept)
{
    RecentFolders<Thing> folders(2, 100);
    keep(folders, 1, 7);
    const auto found = folders.find(folder(1), kStamp);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->size, 7U);
    EXPECT_EQ(folders.find(folder(2), kStamp), nullptr);
}

TEST(RecentFolders, FindsNothingOfAChangedFolder)
{
    RecentFolders<Thing> folders(2, 100);
    keep(folders, 1);
    EXPECT_EQ(folders.find(folder(1), kOther), nullptr);
}

TEST(RecentFolders, LetsGoOfTheOneUsedLongestAgo)
{
    RecentFolders<Thing> folders(2, 100);
    keep(folders, 1);
    keep(folders, 2);
    ASSERT_NE(folders.find(folder(1), kStamp), nullptr);
    keep(folders, 3);
    EXPECT_NE(folders.find(folder(1), kStamp), nullptr);
    EXPECT_EQ(folders.find(folder(2), kStamp), nullptr);
    EXPECT_NE(folders.find(folder(3), kStamp), nullptr);
}

TEST(RecentFolders, LetsGoWhenTheBytesAreTooMany)
{
    RecentFolders<Thing> folders(9, 100);
    keep(folders, 1, 50);
    keep(folders, 2, 50);
    EXPECT_NE(folders.find(folder(1), kStamp), nullptr);
    keep(folders, 3, 1);
    EXPECT_EQ(folders.find(folder(2), kStamp), nullptr);
    EXPECT_NE(folders.find(folder(1), kStamp), nullptr);
}

TEST(RecentFolders, KeepsTheLastOneWhateverItTakes)
{
    RecentFolders<Thing> folders(9, 100);
    keep(folders, 1);
    keep(folders, 2, 1000);
    EXPECT_EQ(folders.find(folder(1), kStamp), nullptr);
    EXPECT_NE(folders.find(folder(2), kStamp), nullptr);
}

TEST(RecentFolders, KeepsOneValueAFolder)
{
    RecentFolders<Thing> folders(2, 100);
    keep(folders, 1);
    keep(folders, 2, 5);
    keep(folders, 2, 6);
    EXPECT_NE(folders.find(folder(1), kStamp), nullptr);
    ASSERT_NE(folders.find(folder(2), kStamp), nullptr);
    EXPECT_EQ(folders.find(folder(2), kStamp)->size, 6U);
}

TEST(RecentFolders, ForgetsAFolder)
{
    RecentFolders<Thing> folders(2, 100);
    keep(folders, 1);
    folders.forget(folder(1));
    EXPECT_EQ(folders.find(folder(1), kStamp), nullptr);
}

} // namespace
} // namespace velmora
