// Lists as other programs write them: encodings, separators, quotes.
#include "admin/ListText.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct Encoded
{
    const char *name;
    QByteArray bytes;
};

const QString kText = QStringLiteral("http://cam/é\n");

class ListTextEncoding : public testing::TestWithParam<Encoded>
{
};

TEST_P(ListTextEncoding, IsFound)
{
    EXPECT_EQ(listText(GetParam().bytes), kText);
}

QByteArray utf16(QByteArray mark, bool bigEndian)
{
    for (const QChar c : kText) {
        const char low = static_cast<char>(c.unicode() & 0xFF);
        const char high = static_cast<char>(c.unicode() >> 8);
        mark += bigEndian ? high : low;
        mark += bigEndian ? low : high;
    }
    return mark;
}

INSTANTIATE_TEST_SUITE_P(All, ListTextEncoding,
                         testing::Values(Encoded{"Utf8", kText.toUtf8()},
                                         Encoded{"Utf8WithMark", "\xEF\xBB\xBF" + kText.toUtf8()},
                                         Encoded{"Windows1252", "http://cam/\xE9\n"},
                                         Encoded{"Utf16WithMark", utf16("\xFF\xFE", false)},
                                         Encoded{"Utf16BigEndianWithMark", utf16("\xFE\xFF", true)},
                                         Encoded{"Utf16WithoutMark", utf16({}, false)},
                                         Encoded{"Utf16BigEndianWithoutMark", utf16({}, true)}),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(ListText, IsNothingForBytesThatAreNoText)
{
    EXPECT_FALSE(listText(QByteArray("\x7f"
                                     "ELF\x02\x01\x01\0\0\x10",
                                     10)));
    EXPECT_FALSE(listText(QByteArray("\xFF\xD8\xFF\xE0\x00\x10JFIF", 10)));
}

TEST(TableLines, TakeAQuotedFieldWhole)
{
    const auto lines = tableLines(QStringLiteral("\"a, \"\"b\"\"\",c\r\n\r\n\"d\ne\",f\ng"), u',');
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].fields, (QStringList{QStringLiteral("a, \"b\""), QStringLiteral("c")}));
    EXPECT_EQ(lines[1].fields, (QStringList{QStringLiteral("d\ne"), QStringLiteral("f")}));
    EXPECT_EQ(lines[1].number, 3);
    EXPECT_EQ(lines[2].fields, QStringList{QStringLiteral("g")});
    EXPECT_EQ(lines[2].number, 5);
}

TEST(TableLines, EndWithAQuoteThatIsNeverClosed)
{
    const auto lines = tableLines(QStringLiteral("a,\"b\nc"), u',');
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].fields, (QStringList{QStringLiteral("a"), QStringLiteral("b\nc")}));
}

TEST(TableField, ComesBackAsItWas)
{
    for (const QString &field :
         {QStringLiteral("plain"), QStringLiteral("a,b"), QStringLiteral("say \"x\""), QString()}) {
        const auto lines = tableLines(tableField(field) + QStringLiteral(",end"), u',');
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(lines[0].fields.first(), field);
    }
}

} // namespace
} // namespace velmora
