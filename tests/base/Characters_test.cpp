// Lengths of characters in names that may be any bytes.
#include "base/Characters.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <array>

namespace velmora {
namespace {

struct Row
{
    QByteArray text;
    qsizetype length;
};

TEST(CharacterLength, IsThatOfACharacterOfUtf8)
{
    const std::array rows = {Row{"a", 1}, Row{"\xC3\xA9x", 2}, Row{"\xE2\x82\xACx", 3},
                             Row{"\xF0\x9F\x98\x80x", 4}};
    for (const Row &row : rows) {
        EXPECT_EQ(characterLength(row.text, 0), row.length) << row.text.toStdString();
    }
}

TEST(CharacterLength, IsOneForAByteThatIsNoUtf8)
{
    const std::array rows = {Row{"\x80x", 1},     Row{"\xC3", 1},     Row{"\xC3x", 1},
                             Row{"\xE2\x82x", 1}, Row{"\xE2\x82", 1}, Row{"\xF0\x9F\x98", 1},
                             Row{"\xC0\x80", 1},  Row{"\xFF\x80", 1}, Row{"\xF5\x80\x80\x80", 1}};
    for (const Row &row : rows) {
        EXPECT_EQ(characterLength(row.text, 0), row.length) << row.text.toHex().toStdString();
    }
}

TEST(CharacterLength, TakesNoContinuationToALetterBeforeIt)
{
    EXPECT_EQ(characterLength("a\x80", 0), 1);
    EXPECT_EQ(characterLength("a\x80", 1), 1);
}

TEST(CharacterLength, CountsFromThePlaceThatIsGiven)
{
    EXPECT_EQ(characterLength("ab\xC3\xA9", 2), 2);
    EXPECT_EQ(characterLength("ab\xC3\xA9", 3), 1);
}

} // namespace
} // namespace velmora
