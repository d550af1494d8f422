// Windows-1252: every byte and what has no byte.
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
    KnownCode{0x00, 0x0000}, KnownCode{0x41, u'A'},     KnownCode{0x7F, 0x007F},
    KnownCode{0x80, 0x20AC}, KnownCode{0x81, 0x0081},   KnownCode{0x82, 0x201A},
    KnownCode{0x8A, 0x0160}, KnownCode{0x8D, 0x008D},   KnownCode{0x8E, 0x017D},
    KnownCode{0x8F, 0x008F}, KnownCode{0x90, 0x0090},   KnownCode{0x92, 0x2019},
    KnownCode{0x99, 0x2122}, KnownCode{0x9D, 0x009D},   KnownCode{0x9E, 0x017E},
    KnownCode{0x9F, 0x0178}, KnownCode{0xA0, 0x00A0},   KnownCode{0xC9, u'\u00C9'},
    KnownCode{0xE9, 0x00E9}, KnownCode{0xFF, u'\u00FF'}};

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
