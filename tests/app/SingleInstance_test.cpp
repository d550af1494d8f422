// One program per program folder.
#include "app/SingleInstance.h"

#include "support/TempTree.h"

#include <QProcess>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(SingleInstance, TheFirstClaimHolds)
{
    const TempTree tree;
    SingleInstance first(tree.path());
    EXPECT_TRUE(first.claim());
}

TEST(SingleInstance, FoldersDoNotDisturbEachOther)
{
    const TempTree one;
    const TempTree two;
    SingleInstance first(one.path());
    SingleInstance second(two.path());
    EXPECT_TRUE(first.claim());
    EXPECT_TRUE(second.claim());
}

TEST(SingleInstance, TheSecondCallsTheFirst)
{
    const TempTree tree;
    SingleInstance first(tree.path());
    ASSERT_TRUE(first.claim());
    QSignalSpy shown(&first, &SingleInstance::shown);
    SingleInstance second(tree.path());
    EXPECT_FALSE(second.claim());
    EXPECT_TRUE(shown.count() > 0 || shown.wait(1000));
}

TEST(SingleInstance, TheClaimEndsWithItsHolder)
{
    const TempTree tree;
    {
        SingleInstance first(tree.path());
        ASSERT_TRUE(first.claim());
    }
    SingleInstance second(tree.path());
    EXPECT_TRUE(second.claim());
}

} // namespace
} // namespace velmora::test
