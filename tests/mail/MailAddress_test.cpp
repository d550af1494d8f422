// What is a mail address, and what only looks like one.
#include "mail/MailAccount.h"
#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

struct GoodRow
{
    const char *text;
    const char *name;
    const char *address;
};

constexpr GoodRow kGood[] = {
    {"guard@example.org", "", "guard@example.org"},
    {"  guard@example.org ", "", "guard@example.org"},
    {"root@localhost", "", "root@localhost"},
    {"a.b+c_d-e@sub.example.co.uk", "", "a.b+c_d-e@sub.example.co.uk"},
    {"!#$%&'*/=?^`{|}~@x.org", "", "!#$%&'*/=?^`{|}~@x.org"},
    {"cam@10-0-0-1.example", "", "cam@10-0-0-1.example"},
    {"Guard <guard@example.org>", "Guard", "guard@example.org"},
    {"<guard@example.org>", "", "guard@example.org"},
    {"\"Doe, John\" <j@example.org>", "Doe, John", "j@example.org"},
    {"\"a \\\"b\\\" \\\\ c\" <j@example.org>", "a \"b\" \\ c", "j@example.org"},
    {"Caméra d'entrée <cam@example.org>", "Caméra d'entrée", "cam@example.org"},
    {"a < b <j@example.org>", "a < b", "j@example.org"},
    {"wache@bücher.example", "", "wache@xn--bcher-kva.example"},
};

constexpr const char *kBad[] = {
    "",
    "guard",
    "@example.org",
    "guard@",
    "guard@@example.org",
    "gu ard@example.org",
    "guard@exam ple.org",
    ".guard@example.org",
    "guard.@example.org",
    "gu..ard@example.org",
    "guard@.example.org",
    "guard@example.org.",
    "guard@example..org",
    "guard@-example.org",
    "guard@example-.org",
    "guard@exam_ple.org",
    "gärtner@example.org",
    "guard@example.org>",
    "<guard@example.org",
    "<guard@example.org> x",
    "guard@example.org, other@example.org",
    "guard@example.org\r\nBcc: all@example.org",
    "guard@example.org\n",
    "Guard\nBcc: all@example.org <guard@example.org>",
    "Guard\r<guard@example.org>",
    "Gu\tard <guard@example.org>",
    "guard\x7f@example.org",
    "Guard\xE2\x80\xA8 <guard@example.org>",
    "guard@example.org> RCPT TO:<x@example.org",
    "\"quoted local\"@example.org",
};

TEST(MailAddressTest, ReadsWhatPeopleWrite)
{
    for (const GoodRow &row : kGood) {
        const auto address = mailAddress(QString::fromUtf8(row.text));
        ASSERT_TRUE(address) << row.text;
        EXPECT_EQ(address->name, QString::fromUtf8(row.name)) << row.text;
        EXPECT_EQ(address->address, row.address) << row.text;
    }
}

TEST(MailAddressTest, RefusesEverythingElse)
{
    for (const char *const text : kBad) {
        EXPECT_FALSE(mailAddress(QString::fromUtf8(text))) << text;
    }
}

TEST(MailAddressTest, HasTheLengthsOfTheProtocol)
{
    const QString host = QStringLiteral("@example.org");
    EXPECT_TRUE(mailAddress(QString(64, u'a') + host));
    EXPECT_FALSE(mailAddress(QString(65, u'a') + host));
    EXPECT_TRUE(mailAddress(QStringLiteral("a@") + QString(63, u'b') + QStringLiteral(".org")));
    EXPECT_FALSE(mailAddress(QStringLiteral("a@") + QString(64, u'b') + QStringLiteral(".org")));
    EXPECT_FALSE(mailAddress(QStringLiteral("a@") + QStringLiteral("b.").repeated(127) +
                             QStringLiteral("org")));
}

TEST(MailAddressTest, AListIsSplitAtCommasAndSemicolonsOutsideOfQuotes)
{
    const auto split = [](const char *list) { return addressTexts(QString::fromUtf8(list)); };
    const auto texts = [](const char *words) { return QString::fromUtf8(words).split(u'|'); };
    EXPECT_EQ(split("a@b"), texts("a@b"));
    EXPECT_EQ(split("a@b,c@d;e@f"), texts("a@b|c@d|e@f"));
    EXPECT_EQ(split(" a@b ; ;, c@d ,"), texts("a@b|c@d"));
    EXPECT_EQ(split("\"Doe, J; x\" <a@b>, c@d"), texts("\"Doe, J; x\" <a@b>|c@d"));
    EXPECT_EQ(split("\"a\\\", b\" <a@b>, c@d"), texts("\"a\\\", b\" <a@b>|c@d"));
    EXPECT_TRUE(split("").isEmpty());
    EXPECT_TRUE(split(" , ; ").isEmpty());
}

} // namespace
} // namespace velmora::test
