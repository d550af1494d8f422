// Replies that arrive in pieces, and dots.
#include "mail/SmtpReply.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

struct ReplyRow
{
    const char *bytes;
    int code;
    const char *lastLine;
    const char *rest;
};

constexpr ReplyRow kReplies[] = {
    {"250 ok\r\n", 250, "250 ok", ""},
    {"250 ok\n", 250, "250 ok", ""},
    {"250\r\n", 250, "250", ""},
    {"250-one\r\n250-two\r\n250 three\r\nmore", 250, "250 three", "more"},
    {"354 go\r\n250 next\r\n", 354, "354 go", "250 next\r\n"},
    {"599 last\r\n", 599, "599 last", ""},
    {"600 odd\r\n", 0, "600 odd", ""},
    {"099 odd\r\n", 0, "099 odd", ""},
    {"25\r\n", 0, "25", ""},
    {"\r\n250 ok\r\n", 0, "", "250 ok\r\n"},
    {"2x0 ok\r\n", 0, "2x0 ok", ""},
    {"25x ok\r\n", 0, "25x ok", ""},
    {"250-one\r\nnonsense\r\n", 0, "nonsense", ""},
};

TEST(SmtpReplies, AreTakenOneByOne)
{
    for (const ReplyRow &row : kReplies) {
        QByteArray bytes = row.bytes;
        const auto reply = takeReply(bytes);
        ASSERT_TRUE(reply) << row.bytes;
        EXPECT_EQ(reply->code, row.code) << row.bytes;
        EXPECT_EQ(reply->lastLine, row.lastLine);
        EXPECT_EQ(bytes, row.rest);
    }
}

TEST(SmtpReplies, AreWaitedForWhileTheyAreNotWhole)
{
    for (const char *const part :
         {"", "2", "250", "250 ok", "250 ok\r", "250-one\r\n", "250-a\r\n250"}) {
        QByteArray bytes = part;
        EXPECT_FALSE(takeReply(bytes)) << part;
        EXPECT_EQ(bytes, part);
    }
}

TEST(SmtpText, DotsAtTheStartOfLinesAreDoubled)
{
    EXPECT_EQ(dotStuffed("a\r\n"), "a\r\n.\r\n");
    EXPECT_EQ(dotStuffed(".\r\n"), "..\r\n.\r\n");
    EXPECT_EQ(dotStuffed("..\r\n.\r\n.a\r\na.\r\n"), "...\r\n..\r\n..a\r\na.\r\n.\r\n");
}

} // namespace
} // namespace velmora::test
