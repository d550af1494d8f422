// When a log becomes the old one, and how lines get into it.
#include "base/LogFile.h"

#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

constexpr qint64 kLimitBytes = 100;

class LogFile : public testing::Test
{
protected:
    void rotate() const { rotateLog(tree_.path(u"a.log"), tree_.path(u"a.old"), kLimitBytes); }

    test::TempTree tree_;
};

TEST_F(LogFile, LeavesALogUpToItsLimit)
{
    tree_.write(u"a.log", QByteArray(kLimitBytes, 'x'));
    rotate();
    EXPECT_TRUE(tree_.exists(u"a.log"));
    EXPECT_FALSE(tree_.exists(u"a.old"));
}

TEST_F(LogFile, ALargerLogTakesThePlaceOfTheOldOne)
{
    tree_.write(u"a.log", QByteArray(kLimitBytes + 1, 'x'));
    tree_.write(u"a.old", "older");
    rotate();
    EXPECT_FALSE(tree_.exists(u"a.log"));
    EXPECT_EQ(tree_.read(u"a.old"), QByteArray(kLimitBytes + 1, 'x'));
}

TEST_F(LogFile, ALogThatCannotBecomeTheOldOneStays)
{
    tree_.write(u"a.log", QByteArray(kLimitBytes + 1, 'x'));
    tree_.makeFolder(u"a.old");
    rotate();
    EXPECT_EQ(tree_.read(u"a.log"), QByteArray(kLimitBytes + 1, 'x'));
}

TEST_F(LogFile, AMissingLogIsNone)
{
    tree_.write(u"a.old", "older");
    rotate();
    EXPECT_EQ(tree_.read(u"a.old"), "older");
}

TEST_F(LogFile, BeginsWithItsFirstLine)
{
    EXPECT_FALSE(appendToLog(tree_.path(u"a.log"), "one\n"));
    EXPECT_FALSE(appendToLog(tree_.path(u"a.log"), "two\n"));
    EXPECT_EQ(tree_.read(u"a.log"), "one\ntwo\n");
}

TEST_F(LogFile, EndsALineThatAKillHasLeftUnfinished)
{
    tree_.write(u"a.log", "one\ntw");
    EXPECT_FALSE(appendToLog(tree_.path(u"a.log"), "three\n"));
    EXPECT_EQ(tree_.read(u"a.log"), "one\ntw\nthree\n");
}

TEST_F(LogFile, TellsThatALineCannotBeWritten)
{
    tree_.makeFolder(u"a.log");
    EXPECT_TRUE(appendToLog(tree_.path(u"a.log"), "one\n"));
}

} // namespace
} // namespace velmora
