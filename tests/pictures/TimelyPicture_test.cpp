#include "pictures/TimelyPicture.h"

#include "PictureMaker.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const PictureWish kSmall{{40, 30}, Fit::KeepShape};

TEST(TimelyPicture, IsDecodedAtTheSizeWishedFor)
{
    const TimelyPicture picture = decodeInTime(encoded(quarters({400, 300}), "jpeg"), kSmall);
    EXPECT_EQ(picture.size, QSize(400, 300));
    EXPECT_EQ(picture.image.size(), QSize(40, 30));
    EXPECT_FALSE(picture.isTooLarge);
}

TEST(TimelyPicture, IsNotDecodedWhenThatWouldTakeTooLong)
{
    const QByteArray png = encoded(quarters({40, 30}), "png");
    EXPECT_FALSE(decodeInTime(claiming(png, {4000, 2500}), kSmall).isTooLarge);
    const TimelyPicture larger = decodeInTime(claiming(png, {4000, 2501}), kSmall);
    EXPECT_TRUE(larger.isTooLarge);
    EXPECT_TRUE(larger.image.isNull());
    EXPECT_EQ(larger.size, QSize(4000, 2501));
}

TEST(TimelyPicture, MayBeAJpegOfTenTimesThatSize)
{
    const QByteArray jpeg = encoded(quarters({40, 30}), "jpeg");
    EXPECT_FALSE(decodeInTime(claiming(jpeg, {10000, 6000}), kSmall).isTooLarge);
    EXPECT_TRUE(decodeInTime(claiming(jpeg, {10001, 10000}), kSmall).isTooLarge);
}

TEST(TimelyPicture, OfAJpegInScansEachCounts)
{
    const QByteArray jpeg = encoded(quarters({40, 30}), "jpeg", Progressive::Yes);
    EXPECT_TRUE(decodeInTime(claiming(jpeg, {10000, 6000}), kSmall).isTooLarge);
}

TEST(TimelyPicture, IsNoneOfOtherBytes)
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray("<html>")}) {
        const TimelyPicture none = decodeInTime(bytes, kSmall);
        EXPECT_TRUE(none.image.isNull());
        EXPECT_FALSE(none.size.isValid());
        EXPECT_FALSE(none.isTooLarge);
    }
}

} // namespace
} // namespace velmora::test
