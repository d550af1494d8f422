// A range of images copied to a folder: what ends it.
#include "tools/RangeCopy.h"

#include "../browser/NameLists.h"
#include "support/BusyClock.h"
#include "support/FakeClock.h"
#include "support/RunTask.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <unistd.h>

namespace velmora::test {
namespace {

const QByteArrayList kNames{"20060307_1000000710.jpg", "20060307_1100000711.jpg",
                            "20060307_1200000712.jpg"};

class RangeCopyTest : public testing::Test
{
protected:
    RangeCopyTest()
    {
        tree_.makeFolder(u"out");
        for (const QByteArray &name : kNames) {
            tree_.write(QStringLiteral("in/") + QString::fromLatin1(name),
                        QByteArray(2'000'000, 'x'));
        }
    }

    void run(const QByteArrayList &names = kNames)
    {
        CopyOrder order{
            tree_.path(u"in"), std::make_shared<ImageNames>(listOf(names)), {}, tree_.path(u"out")};
        order.picks.add(0, names.size());
        runToEnd(copy_.run(order, {}), std::chrono::seconds{10});
    }

    TempTree tree_;
    FakeClock wall_;
    BusyClock clock_{wall_, std::chrono::milliseconds{10}}; // each piece takes a slice
    RangeCopy copy_{clock_};
};

TEST_F(RangeCopyTest, BringsEachImage)
{
    run();
    EXPECT_EQ(copy_.tally().copied, 3);
    EXPECT_EQ(tree_.files(u"out").size(), 3);
}

TEST_F(RangeCopyTest, GoesOnWhenAnImageOfTheOlderFormIsDeleted)
{
    run({"20060307_095959.jpg", kNames[0]});
    EXPECT_EQ(copy_.tally().gone, 1);
    EXPECT_FALSE(copy_.tally().isRenaming);
    EXPECT_EQ(copy_.tally().copied, 1);
}

TEST_F(RangeCopyTest, EndsAtAFileThatChangesWhileItIsCopied)
{
    const QByteArray second = QFile::encodeName(tree_.path(u"in")) + '/' + kNames[1];
    int turns = 0;
    QObject::connect(&copy_, &RangeCopy::advanced, &copy_, [&] {
        turns += copy_.tally().done == 1 ? 1 : 0;
        if (turns == 4) { // in the middle of it
            ASSERT_EQ(::truncate(second.constData(), 1000), 0);
        }
    });
    run();
    EXPECT_EQ(copy_.tally().error.message(), "the file changed while it was copied");
    EXPECT_EQ(copy_.tally().copied, 1);
    EXPECT_EQ(tree_.files(u"out"), QStringList{QString::fromLatin1(kNames[0])});
}

} // namespace
} // namespace velmora::test
