// A camera's folder counted by its names.
#include "health/HealthCount.h"

#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using test::TempTree;

constexpr Moment kMidnight{std::chrono::sys_days{std::chrono::year{2006} / 3 / 8}};

/// An image a minute, the newest a minute before midnight.
void fill(const TempTree &tree, int images)
{
    for (int i = 1; i <= images; ++i) {
        const int minute = 1439 - (i - 1) % 1440;
        const int day = 7 - (i - 1) / 1440;
        const QString moment = QStringLiteral("200603%1_%2%3")
                                   .arg(day, 2, 10, QLatin1Char('0'))
                                   .arg(minute / 60, 2, 10, QLatin1Char('0'))
                                   .arg(minute % 60, 2, 10, QLatin1Char('0'));
        tree.write(moment + QStringLiteral("000000.jpg"), QByteArray(100, 'x'));
    }
}

CameraHealth counted(const TempTree &tree)
{
    HealthCount count(tree.path());
    while (count.countSome()) {
    }
    return count.take();
}

TEST(HealthCount, KnowsTheNewestImageAndTheUsualInterval)
{
    const TempTree tree;
    fill(tree, 10);
    const CameraHealth camera = counted(tree);
    EXPECT_EQ(camera.newest, kMidnight - 1min);
    EXPECT_EQ(camera.usualInterval(), 1min);
    EXPECT_EQ(camera.images, 10);
    EXPECT_EQ(camera.bytes, 1000);
}

TEST(HealthCount, CountsAllImagesOfTheLastDayByTheHour)
{
    const TempTree tree;
    fill(tree, 1500);
    const CameraHealth camera = counted(tree);
    EXPECT_EQ(camera.images, 1500);
    EXPECT_EQ(camera.bytes, 150'000);
    EXPECT_EQ(camera.imagesADay(kMidnight - 1s), 1440);
    EXPECT_EQ(camera.bytesADay(kMidnight - 1s), 144'000);
    EXPECT_EQ(camera.bars(kMidnight - 1s).front().images, 60);
}

TEST(HealthCount, LeavesOutWhatIsNoImage)
{
    const TempTree tree;
    fill(tree, 2);
    tree.write(u"notes.txt", "x");
    tree.write(u"18991230_0000000714.jpg", "x");
    EXPECT_EQ(counted(tree).images, 2);
}

TEST(HealthCount, CountsNothingInAFolderThatIsMissing)
{
    HealthCount count(QStringLiteral("/nowhere/at/all"));
    EXPECT_FALSE(count.countSome());
    EXPECT_EQ(count.take().images, 0);
}

} // namespace
} // namespace velmora
