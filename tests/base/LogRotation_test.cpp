// When a log becomes the old one.
#include "base/LogRotation.h"

#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

constexpr qint64 kLimitBytes = 100;

class LogRotation : public testing::Test
{
protected:
    void rotate() const { rotateLog(tree_.path(u"a.log"), tree_.path(u"a.old"), kLimitBytes); }

    test::TempTree tree_;
};

TEST_F(LogRotation, LeavesALogUpToItsLimit)
{
    tree_.write(u"a.log", QByteArray(kLimitBytes, 'x'));
    rotate();
    EXPECT_TRUE(tree_.exists(u"a.log"));
    EXPECT_FALSE(tree_.exists(u"a.old"));
}

TEST_F(LogRotation, ALargerLogTakesThePlaceOfTheOldOne)
{
    tree_.write(u"a.log", QByteArray(kLimitBytes + 1, 'x'));
    tree_.write(u"a.old", "older");
    rotate();
    EXPECT_FALSE(tree_.exists(u"a.log"));
    EXPECT_EQ(tree_.read(u"a.old"), QByteArray(kLimitBytes + 1, 'x'));
}

TEST_F(LogRotation, ALogThatCannotBecomeTheOldOneStays)
{
    tree_.write(u"a.log", QByteArray(kLimitBytes + 1, 'x'));
    tree_.makeFolder(u"a.old");
    rotate();
    EXPECT_EQ(tree_.read(u"a.log"), QByteArray(kLimitBytes + 1, 'x'));
}

TEST_F(LogRotation, AMissingLogIsNone)
{
    tree_.write(u"a.old", "older");
    rotate();
    EXPECT_EQ(tree_.read(u"a.old"), "older");
}

} // namespace
} // namespace velmora
