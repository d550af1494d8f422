// Whether a BMP continues after its header.
#include "pictures/BmpPixels.h"

#include "PictureMaker.h"

#include <QtEndian>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace test;

constexpr qsizetype kHeadBytes = 54;

QByteArray bmp()
{
    return encoded(quarters({7, 4}), "bmp");
}

QByteArray changed(qsizetype at, quint32 number)
{
    QByteArray bytes = bmp();
    qToLittleEndian(number, bytes.data() + at);
    return bytes;
}

TEST(BmpPixels, AreThereFromTheFirstOn)
{
    EXPECT_TRUE(holdsBmpPixels(bmp()));
    EXPECT_TRUE(holdsBmpPixels(bmp().first(kHeadBytes + 1)));
}

TEST(BmpPixels, AreNotThereInTheHeaderAlone)
{
    for (qsizetype size = 0; size <= kHeadBytes; ++size) {
        EXPECT_FALSE(holdsBmpPixels(bmp().first(size))) << size;
    }
}

TEST(BmpPixels, BeginWhereTheFileSays)
{
    const auto size = static_cast<quint32>(bmp().size());
    EXPECT_TRUE(holdsBmpPixels(changed(10, size - 1)));
    EXPECT_FALSE(holdsBmpPixels(changed(10, size)));
    EXPECT_FALSE(holdsBmpPixels(changed(10, 0xFFFFFFFF)));
    EXPECT_TRUE(holdsBmpPixels(changed(10, 0)));
}

TEST(BmpPixels, AreNoneBehindAHeaderWithoutSense)
{
    EXPECT_FALSE(holdsBmpPixels(changed(14, 39)));
    EXPECT_FALSE(holdsBmpPixels(changed(14, 0)));
    EXPECT_FALSE(holdsBmpPixels(changed(14, 0xFFFFFFFF)));
}

TEST(BmpPixels, AreThereBehindTheOldHeader)
{
    const QByteArray head = QByteArray::fromHex("424D"
                                                "00000000"
                                                "00000000"
                                                "1A000000"
                                                "0C000000"
                                                "0700"
                                                "0400"
                                                "0100"
                                                "1800");
    EXPECT_FALSE(holdsBmpPixels(head));
    EXPECT_TRUE(holdsBmpPixels(head + 'x'));
}

} // namespace
} // namespace velmora
