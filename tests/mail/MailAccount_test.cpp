// The mail section of the settings: what it means and what is refused.
#include "mail/MailAccount.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

std::variant<MailAccount, MailProblem> read(const QByteArray &lines)
{
    return mailAccount(SettingsSnapshot("[Mail]\r\n" + lines));
}

MailAccount good(const QByteArray &lines)
{
    const auto result = read(lines);
    const auto *const account = std::get_if<MailAccount>(&result);
    EXPECT_NE(account, nullptr) << lines.toStdString();
    return account != nullptr ? *account : MailAccount{};
}

MailProblem bad(const QByteArray &lines)
{
    const auto result = read(lines);
    const auto *const problem = std::get_if<MailProblem>(&result);
    EXPECT_NE(problem, nullptr) << lines.toStdString();
    return problem != nullptr ? *problem : MailProblem{};
}

const QByteArray kTo = "To=guard@example.org\r\n";
const QByteArray kServer = "Server=mail.example.org\r\n";

struct ServerRow
{
    const char *server;
    const char *url;
    MailEncryption encryption;
};

constexpr ServerRow kServers[] = {
    {"mail.example.org", "smtp://mail.example.org", MailEncryption::WhenOffered},
    {"mail.example.org:587", "smtp://mail.example.org:587", MailEncryption::WhenOffered},
    {"smtp://mail.example.org", "smtp://mail.example.org", MailEncryption::WhenOffered},
    {"SMTP://mail.example.org/", "smtp://mail.example.org", MailEncryption::WhenOffered},
    {"smtps://mail.example.org", "smtps://mail.example.org", MailEncryption::FromTheStart},
    {"smtps://mail.example.org:465", "smtps://mail.example.org:465", MailEncryption::FromTheStart},
    {"10.0.0.5:25", "smtp://10.0.0.5:25", MailEncryption::WhenOffered},
    {"[::1]:2525", "smtp://[::1]:2525", MailEncryption::WhenOffered},
    {"localhost", "smtp://localhost", MailEncryption::WhenOffered},
};

TEST(MailAccountTest, ReadsTheServersAddress)
{
    for (const ServerRow &row : kServers) {
        const MailAccount account = good(kTo + "Server=" + row.server + "\r\n");
        EXPECT_EQ(account.url, row.url);
        EXPECT_EQ(account.encryption, row.encryption) << row.server;
        EXPECT_EQ(QByteArray(row.url).split('/').last(), account.serverText.toLatin1());
    }
}

constexpr const char *kBadServers[] = {
    "http://mail.example.org",
    "ftp://x",
    "mail.example.org:0",
    "mail.example.org:66000",
    "mail.example.org:abc",
    "smtp://",
    "smtp://:25",
    "mail example org",
    "anna:pw@mail.example.org",
    "smtp://anna:pw@mail.example.org",
    "smtp://@mail.example.org",
    "mail.example.org/path",
    "smtp://h?x",
    "smtp://h#x",
    "//mail.example.org",
    "file:///etc/passwd",
    "::1",
    "mail\x01.example.org",
};

TEST(MailAccountTest, RefusesWhatIsNoMailServerWithoutRepeatingIt)
{
    for (const char *const server : kBadServers) {
        const MailProblem problem = bad(kTo + "Server=" + server + "\r\n");
        EXPECT_EQ(problem.kind, MailFailure::BadServer) << server;
        EXPECT_FALSE(mailProblemText(problem).contains(QStringLiteral("pw")));
    }
}

TEST(MailAccountTest, NeedsAServerAndARecipient)
{
    EXPECT_EQ(bad("").kind, MailFailure::NoServer);
    EXPECT_EQ(bad(kTo).kind, MailFailure::NoServer);
    EXPECT_EQ(bad(kTo + "Server=  \r\n").kind, MailFailure::NoServer);
    EXPECT_EQ(bad(kServer).kind, MailFailure::NoRecipient);
    EXPECT_EQ(bad(kServer + "To= ; ,\r\n").kind, MailFailure::NoRecipient);
}

TEST(MailAccountTest, SeveralRecipientsStandBetweenCommasOrSemicolons)
{
    const MailAccount account =
        good(kServer + "To=a@example.org, Guard <b@example.org>;c@example.org\r\n");
    ASSERT_EQ(account.to.size(), 3);
    EXPECT_EQ(account.to[1].name, QStringLiteral("Guard"));
    EXPECT_EQ(account.to[2].address, "c@example.org");
}

TEST(MailAccountTest, OneBadRecipientIsReported)
{
    const MailProblem problem = bad(kServer + "To=a@example.org, b\x01@example\r\n");
    EXPECT_EQ(problem.kind, MailFailure::BadAddress);
    EXPECT_EQ(problem.detail, QStringLiteral("To=b @example"));
    EXPECT_TRUE(mailProblemText(problem).contains(QStringLiteral("To=b @example")));
}

TEST(MailAccountTest, TheFirstRecipientIsTheSenderUnlessOneIsSet)
{
    EXPECT_EQ(good(kServer + kTo).from.address, "guard@example.org");
    EXPECT_EQ(good(kServer + kTo + "From=Cam\xE9ra <cam@example.org>\r\n").from,
              (MailAddress{QStringLiteral("Caméra"), "cam@example.org"}));
    const MailProblem problem = bad(kServer + kTo + "From=cam\r\n");
    EXPECT_EQ(problem.kind, MailFailure::BadAddress);
    EXPECT_EQ(problem.detail, QStringLiteral("From=cam"));
}

struct LoginRow
{
    const char *server;
    MailEncryption encryption;
};

constexpr LoginRow kLogins[] = {
    {"mail.example.org", MailEncryption::Required},
    {"smtp://mail.example.org:587", MailEncryption::Required},
    {"smtps://mail.example.org", MailEncryption::FromTheStart},
    {"localhost", MailEncryption::WhenOffered},
    {"LOCALHOST:25", MailEncryption::WhenOffered},
    {"127.0.0.1:2525", MailEncryption::WhenOffered},
    {"127.200.3.4", MailEncryption::WhenOffered},
    {"[::1]", MailEncryption::WhenOffered},
    {"smtps://127.0.0.1", MailEncryption::FromTheStart},
    {"128.0.0.1", MailEncryption::Required},
    {"127.0.0.1.example.org", MailEncryption::Required},
    {"127.example", MailEncryption::Required},
    {"localhost.example.org", MailEncryption::Required},
    {"notlocalhost", MailEncryption::Required},
    {"[::2]", MailEncryption::Required},
    {"[::ffff:10.0.0.1]", MailEncryption::Required},
    {"0.0.0.0", MailEncryption::Required},
};

TEST(MailAccountTest, ALoginLeavesThisMachineOnlyEncrypted)
{
    for (const LoginRow &row : kLogins) {
        const MailAccount account =
            good(kTo + "Server=" + row.server + "\r\nUser=anna\r\nPassword=p\xE9 w\r\n");
        EXPECT_EQ(account.encryption, row.encryption) << row.server;
        EXPECT_EQ(account.user, "anna");
        EXPECT_EQ(account.password, "p\xC3\xA9 w");
    }
}

TEST(MailAccountTest, AUserMayHaveNoPassword)
{
    EXPECT_EQ(good(kServer + kTo + "User=anna\r\n").password, "");
}

TEST(MailAccountTest, APasswordNeedsAUserAndNeitherHoldsControlCharacters)
{
    for (const QByteArray &lines :
         {QByteArray("Password=secret\r\n"), QByteArray("User=an\x01na\r\n"),
          QByteArray("User=anna\r\nPassword=sec\x1bret\r\n")}) {
        const MailProblem problem = bad(kServer + kTo + lines);
        EXPECT_EQ(problem.kind, MailFailure::BadLogin) << lines.toStdString();
        EXPECT_FALSE(mailProblemText(problem).contains(QStringLiteral("ret")));
    }
}

TEST(MailAccountTest, EveryProblemHasASentenceOfItsOwn)
{
    QStringList texts;
    for (int kind = 0; kind <= static_cast<int>(MailFailure::Stopped); ++kind) {
        const QString text = mailProblemText(
            {static_cast<MailFailure>(kind), QStringLiteral("detail"), QStringLiteral("host:25")});
        EXPECT_FALSE(texts.contains(text)) << text.toStdString();
        EXPECT_FALSE(text.contains(u'%')) << text.toStdString();
        texts.append(text);
    }
}

} // namespace
} // namespace velmora::test
