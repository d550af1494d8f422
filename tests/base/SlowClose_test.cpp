// Long files that go, a part a turn.
#include "base/SlowClose.h"

#include "base/WorkFile.h"
#include "support/LoopTurns.h"
#include "support/TempTree.h"

#include <QCoreApplication>
#include <QFile>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace velmora::test {
namespace {

constexpr off_t kLongBytes = off_t{20} * 1024 * 1024;

class SlowCloseTest : public testing::Test
{
protected:
    UniqueFd openLong(const QString &name)
    {
        UniqueFd file(::open(QFile::encodeName(tree_.path(name)).constData(),
                             O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        EXPECT_EQ(::ftruncate(file.get(), kLongBytes), 0);
        return file;
    }

    TempTree tree_;
    SlowClose close_;
};

TEST_F(SlowCloseTest, GivesBackAPartATurn)
{
    UniqueFd file = openLong(QStringLiteral("a"));
    const UniqueFd second(::dup(file.get()));
    ASSERT_TRUE(QFile::remove(tree_.path(u"a")));
    const LoopTurns loop;
    close_.take(std::move(file));
    off_t before = kLongBytes;
    while (close_.open() > 0 && loop.turns() < 1000) {
        QCoreApplication::processEvents();
        const off_t now = ::lseek(second.get(), 0, SEEK_END);
        EXPECT_LE(before - now, off_t{4} * 1024 * 1024);
        before = now;
    }
    EXPECT_EQ(close_.open(), 0);
    EXPECT_LE(before, off_t{4} * 1024 * 1024);
}

TEST_F(SlowCloseTest, LeavesAFileAloneThatHasAName)
{
    close_.take(openLong(QStringLiteral("a")));
    EXPECT_EQ(close_.open(), 0);
    EXPECT_EQ(QFile(tree_.path(u"a")).size(), kLongBytes);
}

// As when an image is stored and its body goes.
TEST_F(SlowCloseTest, LeavesAWorkFileAloneThatWasGivenItsPath)
{
    for (const WorkFile::Naming naming : {WorkFile::Naming::WhenWhole, WorkFile::Naming::AtOnce}) {
        WorkFile file(QFile::encodeName(tree_.path()), 0600, naming);
        ASSERT_EQ(::ftruncate(file.fd(), kLongBytes), 0);
        const QString path = tree_.path(naming == WorkFile::Naming::AtOnce ? u"a" : u"b");
        ASSERT_FALSE(file.appearAs(QFile::encodeName(path)));
        close_.take(file.takeFile());
        EXPECT_EQ(close_.open(), 0);
        EXPECT_EQ(QFile(path).size(), kLongBytes);
    }
}

TEST_F(SlowCloseTest, TakesAWorkFileThatWasNotNeeded)
{
    for (const WorkFile::Naming naming : {WorkFile::Naming::WhenWhole, WorkFile::Naming::AtOnce}) {
        WorkFile file(QFile::encodeName(tree_.path()), 0600, naming);
        ASSERT_EQ(::ftruncate(file.fd(), kLongBytes), 0);
        close_.take(file.takeFile());
    }
    EXPECT_EQ(close_.open(), 2);
    EXPECT_EQ(tree_.files(), QStringList());
}

} // namespace
} // namespace velmora::test
