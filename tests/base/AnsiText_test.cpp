// Windows-1252: every byte, and characters without one.
#include "base/AnsiText.h"

#include "support/Printers.h"

#include <QSet>

#include <gtest/gtest.h>

#include <array>
#include <numeric>

namespace velmora {
namespace {

QByteArray allBytes()
{
    QByteArray bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}

struct KnownCode
{
    unsigned char byte;
    char16_t unicode;
};

constexpr std::array kKnownCodes = {
    KnownCode{0x00, 0x0000}, KnownCode{0x41, 0x0041}, KnownCode{0x7F, 0x007F},
    KnownCode{0x80, 0x20AC}, KnownCode{0x81, 0x0081}, KnownCode{0x82, 0x201A},
    KnownCode{0x83, 0x0192}, KnownCode{0x84, 0x201E}, KnownCode{0x85, 0x2026},
    KnownCode{0x86, 0x2020}, KnownCode{0x87, 0x2021}, KnownCode{0x88, 0x02C6},
    KnownCode{0x89, 0x2030}, KnownCode{0x8A, 0x0160}, KnownCode{0x8B, 0x2039},
    KnownCode{0x8C, 0x0152}, KnownCode{0x8D, 0x008D}, KnownCode{0x8E, 0x017D},
    KnownCode{0x8F, 0x008F}, KnownCode{0x90, 0x0090}, KnownCode{0x91, 0x2018},
    KnownCode{0x92, 0x2019}, KnownCode{0x93, 0x201C}, KnownCode{0x94, 0x201D},
    KnownCode{0x95, 0x2022}, KnownCode{0x96, 0x2013}, KnownCode{0x97, 0x2014},
    KnownCode{0x98, 0x02DC}, KnownCode{0x99, 0x2122}, KnownCode{0x9A, 0x0161},
    KnownCode{0x9B, 0x203A}, KnownCode{0x9C, 0x0153}, KnownCode{0x9D, 0x009D},
    KnownCode{0x9E, 0x017E}, KnownCode{0x9F, 0x0178}, KnownCode{0xA0, 0x00A0},
    KnownCode{0xC9, 0x00C9}, KnownCode{0xE9, 0x00E9}, KnownCode{0xFF, 0x00FF}};

TEST(AnsiText, BringsEveryByteBack)
{
    EXPECT_EQ(toAnsi(fromAnsi(allBytes())), allBytes());
}

TEST(AnsiText, HasACharacterOfItsOwnForEveryByte)
{
    const QString text = fromAnsi(allBytes());
    EXPECT_EQ(QSet<QChar>(text.begin(), text.end()).size(), 256);
    EXPECT_TRUE(fitsAnsi(text));
}

TEST(AnsiText, FollowsTheCodePage)
{
    for (const KnownCode &code : kKnownCodes) {
        SCOPED_TRACE(static_cast<int>(code.byte));
        const QByteArray byte(1, static_cast<char>(code.byte));
        EXPECT_EQ(fromAnsi(byte), QString(QChar(code.unicode)));
        EXPECT_EQ(toAnsi(QString(QChar(code.unicode))), byte);
    }
}

TEST(AnsiText, WritesAQuestionMarkForWhatThePageLacks)
{
    EXPECT_EQ(toAnsi(u"a\u0100\u4e2d\u0416z"), QByteArray("a???z"));
    EXPECT_EQ(toAnsi(u"\u0080\u009f"), QByteArray("??"))
        << "their bytes belong to other characters";
    EXPECT_EQ(toAnsi(u"\U0001F4F7"), QByteArray("??")) << "one for each half of the pair";
}

TEST(AnsiText, TellsWhatWouldBeLost)
{
    EXPECT_TRUE(fitsAnsi(u""));
    EXPECT_TRUE(fitsAnsi(u"caf\u00e9 \u20ac \u0081"));
    EXPECT_FALSE(fitsAnsi(u"caf\u00e9 \u0100"));
    EXPECT_FALSE(fitsAnsi(u"\u0080"));
}

TEST(AnsiText, KeepsAnEmptyTextEmpty)
{
    EXPECT_TRUE(toAnsi(QStringView()).isEmpty());
    EXPECT_TRUE(fromAnsi(QByteArrayView()).isEmpty());
}

} // namespace
} // namespace velmora
