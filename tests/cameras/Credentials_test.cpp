// Keeps user names and passwords in addresses from being seen.
#include "cameras/Credentials.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

struct TextRow
{
    const char *name;
    QString given;
    QString expected;
};

void PrintTo(const TextRow &row, std::ostream *out)
{
    *out << row.given.toStdString();
}

class WithoutCredentials : public testing::TestWithParam<TextRow>
{
};

TEST_P(WithoutCredentials, ShowsNoUserAndNoPassword)
{
    EXPECT_EQ(withoutCredentials(GetParam().given), GetParam().expected);
}

const TextRow kCredentials[] = {
    {"UserAndPassword", QStringLiteral("http://me:pw@h/a.jpg"), QStringLiteral("http://h/a.jpg")},
    {"UserAlone", QStringLiteral("https://me@h/a.jpg"), QStringLiteral("https://h/a.jpg")},
    {"EmptyPassword", QStringLiteral("http://me:@h/a.jpg"), QStringLiteral("http://h/a.jpg")},
    {"PasswordAlone", QStringLiteral("http://:pw@h/a.jpg"), QStringLiteral("http://h/a.jpg")},
    {"WithPort", QStringLiteral("http://me:pw@h:8080/a.jpg"),
     QStringLiteral("http://h:8080/a.jpg")},
    {"WithoutScheme", QStringLiteral("me:pw@h/a.jpg"), QStringLiteral("h/a.jpg")},
    {"WithoutPath", QStringLiteral("http://me:pw@h"), QStringLiteral("http://h")},
    {"AtSignInThePassword", QStringLiteral("http://me:p@w@h/a.jpg"),
     QStringLiteral("http://h/a.jpg")},
    {"EncodedPassword", QStringLiteral("http://me:p%40w@h/a.jpg"),
     QStringLiteral("http://h/a.jpg")},
    {"AtSignInThePath", QStringLiteral("http://h/a@b.jpg"), QStringLiteral("http://h/a@b.jpg")},
    {"AtSignInTheQuery", QStringLiteral("http://h/a?b=c@d"), QStringLiteral("http://h/a?b=c@d")},
    {"QueryFields", QStringLiteral("http://h/a.cgi?user=me&pwd=secret&x=1"),
     QStringLiteral("http://h/a.cgi?user=***&pwd=***&x=1")},
    {"QueryFieldInAnyCase", QStringLiteral("http://h/a.cgi?PassWord=secret"),
     QStringLiteral("http://h/a.cgi?PassWord=***")},
    {"QueryFieldBeforeFragment", QStringLiteral("http://h/a?token=t#end"),
     QStringLiteral("http://h/a?token=***#end")},
    {"OtherQueryFields", QStringLiteral("http://h/a.cgi?quality=1&users=2"),
     QStringLiteral("http://h/a.cgi?quality=1&users=2")},
    {"Both", QStringLiteral("http://me:pw@h/a.cgi?pass=x"),
     QStringLiteral("http://h/a.cgi?pass=***")},
    {"NothingSecret", QStringLiteral("http://10.0.0.5:81/snap.cgi?res=2"),
     QStringLiteral("http://10.0.0.5:81/snap.cgi?res=2")},
    {"Empty", QString(), QString()},
};

INSTANTIATE_TEST_SUITE_P(Credentials, WithoutCredentials, testing::ValuesIn(kCredentials),
                         [](const auto &info) { return std::string(info.param.name); });

class SecretField : public testing::TestWithParam<const char *>
{
};

TEST_P(SecretField, IsMaskedInEveryPlace)
{
    const QString name = QString::fromLatin1(GetParam());
    EXPECT_EQ(withoutCredentials(QStringLiteral("http://h/a?%1=xyz&b=1").arg(name)),
              QStringLiteral("http://h/a?%1=***&b=1").arg(name));
    EXPECT_EQ(withoutCredentials(QStringLiteral("http://h/a?b=1&%1=xyz").arg(name.toUpper())),
              QStringLiteral("http://h/a?b=1&%1=***").arg(name.toUpper()));
}

INSTANTIATE_TEST_SUITE_P(Credentials, SecretField,
                         testing::Values("user", "usr", "username", "login", "loginuse", "loginpas",
                                         "account", "pw", "pwd", "pas", "pass", "passwd",
                                         "password", "psw", "secret", "token", "auth"));

} // namespace
} // namespace velmora::test
