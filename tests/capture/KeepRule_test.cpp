// Undated pictures: which are new, and the dates that they get.
#include "capture/KeepRule.h"

#include "capture/UndatedWatch.h"
#include "support/FakeClock.h"
#include "support/RunTask.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>

#include <set>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

QByteArray picture(int grey, const char *format = "PNG")
{
    QImage image(320, 180, QImage::Format_RGB32);
    image.fill(QColor(grey, grey, grey));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QBuffer::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

class Mark : public testing::Test
{
protected:
    PictureMark mark(const QByteArray &bytes, MarkKind kind = MarkKind::DigestAndLook)
    {
        const ReplyBody body(bytes);
        return resultOf(markOf(&body, kind, &clock));
    }

    FakeClock clock;
};

TEST_F(Mark, IsTheSameForTheSameBytesAlone)
{
    const QByteArray bytes = picture(100);
    EXPECT_EQ(mark(bytes), mark(bytes));
    EXPECT_NE(mark(bytes).digest, mark(bytes + "x").digest);
    EXPECT_EQ(mark(bytes).look, mark(bytes + "x").look);
    EXPECT_TRUE(mark(bytes, MarkKind::Digest).look.isEmpty());
}

TEST_F(Mark, FitsIntoAValueOfTheSettings)
{
    EXPECT_LE(mark(picture(100)).look.size(), 254);
    EXPECT_LE(mark(picture(100)).digest.size(), 254);
}

TEST_F(Mark, HasNoLookOfWhatIsNoPicture)
{
    EXPECT_TRUE(mark(QByteArray(5000, 'x')).look.isEmpty());
    EXPECT_FALSE(mark(QByteArray(5000, 'x')).digest.isEmpty());
}

TEST_F(Mark, TellsHowMuchTwoPicturesDiffer)
{
    EXPECT_DOUBLE_EQ(differencePercent(mark(picture(0)), mark(picture(255))).value(), 100);
    EXPECT_DOUBLE_EQ(differencePercent(mark(picture(7)), mark(picture(7))).value(), 0);
    EXPECT_NEAR(differencePercent(mark(picture(100)), mark(picture(151))).value(), 20, 0.5);
    EXPECT_FALSE(differencePercent(mark(picture(0)), mark("x")));
    EXPECT_FALSE(differencePercent(PictureMark{}, PictureMark{}));
}

TEST_F(Mark, TakesALongBodyInPieces)
{
    const QByteArray bytes(3 * 1024 * 1024, 'x');
    EXPECT_EQ(mark(bytes, MarkKind::Digest), mark(bytes, MarkKind::Digest));
}

class KeepRule : public Mark
{
protected:
    bool isNew(const KeepChoice &choice, int grey, int storedGrey,
               FolderState folder = FolderState::HoldsFiles)
    {
        return isNewUndated({choice, mark(picture(grey)), mark(picture(storedGrey))}, folder);
    }
};

TEST_F(KeepRule, KeepsWhatDiffers)
{
    EXPECT_TRUE(isNew({Keep::Differing}, 100, 101));
    EXPECT_FALSE(isNew({Keep::Differing}, 100, 100));
}

TEST_F(KeepRule, KeepsWhatDiffersClearly)
{
    EXPECT_FALSE(isNew({Keep::Clearly, 20}, 100, 140));
    EXPECT_TRUE(isNew({Keep::Clearly, 20}, 100, 160));
    EXPECT_FALSE(isNew({Keep::Clearly, 1}, 100, 100));
}

TEST_F(KeepRule, KeepsAnythingInAnEmptyFolder)
{
    EXPECT_TRUE(isNew({Keep::Differing}, 100, 100, FolderState::Empty));
    EXPECT_TRUE(isNew({Keep::Clearly, 50}, 100, 100, FolderState::Empty));
}

TEST_F(KeepRule, LetsTheBytesDecideWhereLooksCannotBeCompared)
{
    EXPECT_TRUE(
        isNewUndated({{Keep::Clearly, 50}, mark("x"), mark(picture(1))}, FolderState::HoldsFiles));
    EXPECT_FALSE(
        isNewUndated({{Keep::Clearly, 50}, mark("x"), mark("x")}, FolderState::HoldsFiles));
    EXPECT_TRUE(isNewUndated({{Keep::Differing}, mark("x"), {}}, FolderState::HoldsFiles));
}

TEST_F(KeepRule, KeepsNothingThatCannotBeRead)
{
    EXPECT_FALSE(isNewUndated({{Keep::Differing}, {}, mark("x")}, FolderState::HoldsFiles));
}

TEST(UndatedDate, IsThatOfTheAnswerWhenItIsPlausible)
{
    const WallTime now = kFakeStart;
    const WallTime earlier = now - 10min;
    EXPECT_EQ(undatedDate(now - 5s, earlier, now), now - 5s);
    EXPECT_EQ(undatedDate(now + 3h, earlier, now), now + 3h);
    EXPECT_EQ(undatedDate(now - 5s, std::nullopt, now), now - 5s);
    EXPECT_EQ(undatedDate(std::nullopt, earlier, now), now);
    EXPECT_EQ(undatedDate(now - 25h, std::nullopt, now), now);
    EXPECT_EQ(undatedDate(now + 25h, std::nullopt, now), now);
}

TEST(UndatedDate, IsTheClocksWhenTheCamerasStandsStill)
{
    const WallTime now = kFakeStart;
    EXPECT_EQ(undatedDate(now - 10min, now - 10min, now), now);
    EXPECT_EQ(undatedDate(now - 11min, now - 10min, now), now);
}

TEST(UndatedDate, IsNotTheSameTwice)
{
    EXPECT_EQ(undatedDate(kFakeStart, kFakeStart, kFakeStart), kFakeStart + 1s);
    EXPECT_EQ(undatedDate(std::nullopt, kFakeStart, kFakeStart), kFakeStart + 1s);
}

TEST(UndatedDate, IsAnotherForEachOfManyPicturesOfOneSecond)
{
    std::set<WallTime> dates;
    std::optional<WallTime> stored;
    for (int i = 0; i < 10; ++i) {
        stored = undatedDate(std::nullopt, stored, kFakeStart);
        dates.insert(*stored);
    }
    EXPECT_EQ(dates.size(), 10U);
    EXPECT_EQ(undatedDate(std::nullopt, stored, kFakeStart + 5s), *stored + 1s);
    EXPECT_EQ(undatedDate(std::nullopt, stored, kFakeStart + 10s), kFakeStart + 10s);
}

TEST(UndatedDate, IsTheClocksThatWasSetBack)
{
    EXPECT_EQ(undatedDate(std::nullopt, kFakeStart + 1h, kFakeStart), kFakeStart);
}

TEST(UndatedWatch, TellsOfACameraOnce)
{
    UndatedWatch watch;
    EXPECT_FALSE(watch.addUndated({0, 3}, {}));
    EXPECT_FALSE(watch.addUndated({0, 3}, {}));
    EXPECT_FALSE(watch.addUndated({0, 4}, {}));
    EXPECT_TRUE(watch.addUndated({0, 3}, {}));
    for (int i = 0; i < 10; ++i) {
        EXPECT_FALSE(watch.addUndated({0, 3}, {}));
    }
}

TEST(UndatedWatch, CountsPicturesInARow)
{
    UndatedWatch watch;
    EXPECT_FALSE(watch.addUndated({0, 3}, {}));
    EXPECT_FALSE(watch.addUndated({0, 3}, {}));
    watch.addDated({0, 3});
    EXPECT_FALSE(watch.addUndated({0, 3}, {}));
    EXPECT_FALSE(watch.addUndated({0, 3}, {}));
    EXPECT_TRUE(watch.addUndated({0, 3}, {}));
}

} // namespace
} // namespace velmora::test
