// Whether a BMP is all there.
#include "pictures/BmpLength.h"

#include "PictureMaker.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <limits>

namespace velmora {
namespace {

using namespace test;

// 54 bytes of header; lines of 21 bytes are filled up to 24.
QByteArray bmp()
{
    return encoded(quarters({7, 4}), "bmp");
}

template <typename Number>
QByteArray changed(qsizetype at, Number number)
{
    QByteArray bytes = bmp();
    qToLittleEndian(number, bytes.data() + at);
    return bytes;
}

TEST(BmpLength, IsThatOfAWholeFile)
{
    ASSERT_EQ(bmp().size(), 54 + 4 * 24);
    EXPECT_TRUE(isWholeBmp(bmp()));
    EXPECT_TRUE(isWholeBmp(bmp() + "more"));
}

TEST(BmpLength, IsTooShortByOneByte)
{
    EXPECT_FALSE(isWholeBmp(bmp().chopped(1)));
}

TEST(BmpLength, IsTooShortWithoutItsHeader)
{
    for (qsizetype size = 0; size < 54; ++size) {
        EXPECT_FALSE(isWholeBmp(bmp().first(size)));
    }
}

TEST(BmpLength, CountsTheLinesOfAPictureFromTheTop)
{
    EXPECT_TRUE(isWholeBmp(changed<qint32>(22, -4)));
    EXPECT_FALSE(isWholeBmp(changed<qint32>(22, -5)));
}

TEST(BmpLength, CountsFromWhereThePixelsBegin)
{
    EXPECT_FALSE(isWholeBmp(changed<quint32>(10, 55)));
    EXPECT_FALSE(isWholeBmp(changed<quint32>(10, 0xFFFFFFFF)));
    EXPECT_FALSE(isWholeBmp(changed<quint32>(10, 0))); // behind a palette of unknown length
}

TEST(BmpLength, IsUnknownOfOtherCodings)
{
    EXPECT_TRUE(isWholeBmp(changed<quint32>(30, 3)));
    EXPECT_FALSE(isWholeBmp(changed<quint32>(30, 1)));
    EXPECT_FALSE(isWholeBmp(changed<quint32>(30, 2)));
}

TEST(BmpLength, IsUnknownOfSenselessHeaders)
{
    EXPECT_FALSE(isWholeBmp(changed<qint32>(18, 0)));
    EXPECT_FALSE(isWholeBmp(changed<qint32>(18, -7)));
    EXPECT_FALSE(isWholeBmp(changed<quint32>(14, 39)));
    EXPECT_FALSE(isWholeBmp(changed<quint32>(14, 0xFFFFFFFF)));
    EXPECT_FALSE(isWholeBmp(changed<qint32>(22, std::numeric_limits<qint32>::min())));
}

TEST(BmpLength, IsTooShortForSizesBeyondNumbers)
{
    QByteArray bytes = changed<qint32>(18, std::numeric_limits<qint32>::max());
    qToLittleEndian(std::numeric_limits<qint32>::max(), bytes.data() + 22);
    qToLittleEndian(quint16{0xFFFF}, bytes.data() + 28);
    EXPECT_FALSE(isWholeBmp(bytes));
}

TEST(BmpLength, ReadsTheOldHeader)
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
    EXPECT_TRUE(isWholeBmp(head + QByteArray(4 * 24, 'x')));
    EXPECT_FALSE(isWholeBmp(head + QByteArray(4 * 24 - 1, 'x')));
}

} // namespace
} // namespace velmora
