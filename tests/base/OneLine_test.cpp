// Texts that must stay on one line.
#include "base/OneLine.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(OneLine, HasBlanksForControlCharacters)
{
    EXPECT_EQ(onOneLine(QStringLiteral("a\r\nb\tc\u0085d\u2028e")), QStringLiteral("a  b c d e"));
    EXPECT_EQ(onOneLine(QStringLiteral("été")), QStringLiteral("été"));
}

TEST(HoldsControls, IsTrueOfLineBreaksOfAnyKind)
{
    for (const char16_t c : {u'\r', u'\n', u'\t', u'\0', u'\x7F', u'\x85', u'\x2028', u'\x2029'}) {
        EXPECT_TRUE(holdsControls(QStringLiteral("a") + QChar(c) + u'b')) << static_cast<int>(c);
    }
    EXPECT_FALSE(holdsControls(u"été \u00A0 x"));
    EXPECT_FALSE(holdsControls({}));
}

TEST(NonEmptyLines, EndsThemAtBreaksOfAnyKind)
{
    const QString text = QStringLiteral("\n\na\r\n b \rc\u2028\u2029d\te\n");
    EXPECT_EQ(nonEmptyLines(text), (QStringList{QStringLiteral("a"), QStringLiteral(" b "),
                                                QStringLiteral("c"), QStringLiteral("d\te")}));
    EXPECT_EQ(nonEmptyLines(QStringLiteral("a")), QStringList{QStringLiteral("a")});
    EXPECT_TRUE(nonEmptyLines({}).isEmpty());
}

} // namespace
} // namespace velmora
