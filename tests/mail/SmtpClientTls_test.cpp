// Mail over encrypted connections, and what is not sent without one.
#include "SmtpExchange.h"
#include "support/TempTree.h"

#include <QFile>

namespace velmora::test {
namespace {

class SmtpClientTls : public SmtpExchange
{
protected:
    [[nodiscard]] MailAccount encryptedFromTheStart(const QByteArray &host) const
    {
        MailAccount mine = account();
        mine.url = "smtps://" + host;
        mine.encryption = MailEncryption::FromTheStart;
        return mine;
    }

    [[nodiscard]] MailAccount encryptedByAllMeans() const
    {
        MailAccount mine = accountWithLogin();
        mine.encryption = MailEncryption::Required;
        return mine;
    }

    MailFailure failureOf(const MailAccount &account)
    {
        return send(account).value_or(MailProblem{}).kind;
    }

    /// Turns of the event loop from the start of sending until the server hears of it.
    int turnsUntilConnected(const QByteArray &authorities)
    {
        SmtpClient client{
            {std::chrono::seconds{20}, std::chrono::seconds{20}, AuthorityPlaces{authorities, {}}}};
        server_.script.tls = MailTls::FromTheStart;
        const LoopTurns loop;
        int turns = 0;
        QObject guard;
        QObject::connect(&server_, &QTcpServer::newConnection, &guard,
                         [&] { turns = loop.turns(); });
        EXPECT_EQ(sendBy(client, encryptedFromTheStart(server_.host())), std::nullopt);
        return turns;
    }

    SmtpClient wary_; // trusts what the system trusts
};

TEST_F(SmtpClientTls, EncryptsWhereTheServerOffersIt)
{
    server_.script.tls = MailTls::Offered;
    EXPECT_EQ(send(account()), std::nullopt);
    EXPECT_TRUE(onlyMail().encrypted);
    EXPECT_EQ(onlyMail().text, kText);
}

TEST_F(SmtpClientTls, EncryptsFromTheStart)
{
    server_.script.tls = MailTls::FromTheStart;
    EXPECT_EQ(send(encryptedFromTheStart(server_.host())), std::nullopt);
    EXPECT_TRUE(onlyMail().encrypted);
}

TEST_F(SmtpClientTls, LogsInOnceTheConnectionIsEncrypted)
{
    askForLogin("PLAIN");
    server_.script.tls = MailTls::Offered;
    EXPECT_EQ(send(encryptedByAllMeans()), std::nullopt);
    EXPECT_TRUE(onlyMail().loggedIn);
    EXPECT_TRUE(onlyMail().encrypted);
}

TEST_F(SmtpClientTls, ALongMailArrivesWhole)
{
    server_.script.tls = MailTls::FromTheStart;
    const QByteArray text = QByteArray("line of text\r\n").repeated(50000);
    EXPECT_EQ(send(encryptedFromTheStart(server_.host()), text), std::nullopt);
    EXPECT_TRUE(onlyMail().text == text);
}

TEST_F(SmtpClientTls, NeverSaysAPasswordInTheClear)
{
    askForLogin("PLAIN LOGIN");
    EXPECT_EQ(failureOf(encryptedByAllMeans()), MailFailure::NotEncrypted);
    server_.script.tls = MailTls::Offered;
    server_.script.replies = {{"STARTTLS", "454 not available"}};
    EXPECT_EQ(failureOf(encryptedByAllMeans()), MailFailure::NotEncrypted);
    for (const QByteArray &command : server_.commands()) {
        EXPECT_FALSE(command.startsWith("AUTH")) << command.toStdString();
    }
}

TEST_F(SmtpClientTls, GoesOnInTheClearWithoutALoginWhenEncryptionIsRefused)
{
    server_.script.tls = MailTls::Offered;
    server_.script.replies = {{"STARTTLS", "454 not available"}};
    EXPECT_EQ(send(account()), std::nullopt);
    EXPECT_FALSE(onlyMail().encrypted);
}

TEST_F(SmtpClientTls, RefusesACertificateThatNoOneVouchesFor)
{
    server_.script.tls = MailTls::Offered;
    const auto byOffer = sendBy(wary_, account());
    ASSERT_TRUE(byOffer);
    EXPECT_EQ(byOffer->kind, MailFailure::Tls);
    EXPECT_TRUE(mailProblemText(*byOffer).contains(QStringLiteral("certificate")));
    server_.script.tls = MailTls::FromTheStart;
    const auto fromTheStart = sendBy(wary_, encryptedFromTheStart(server_.host()));
    ASSERT_TRUE(fromTheStart);
    EXPECT_EQ(fromTheStart->kind, MailFailure::Tls);
    EXPECT_TRUE(server_.mails().isEmpty());
}

TEST_F(SmtpClientTls, RefusesTheCertificateOfAnotherHost)
{
    server_.script.tls = MailTls::FromTheStart;
    const QByteArray other = "localhost:" + QByteArray::number(server_.serverPort());
    EXPECT_EQ(failureOf(encryptedFromTheStart(other)), MailFailure::Tls);
}

TEST_F(SmtpClientTls, TellsAServerThatDoesNotEncryptFromTheStart)
{
    EXPECT_EQ(failureOf(encryptedFromTheStart(server_.host())), MailFailure::Tls);
}

TEST_F(SmtpClientTls, TheEventLoopRunsWhileTheServerThinks)
{
    server_.script.tls = MailTls::FromTheStart;
    for (const char *const step : {"CONNECT", "TEXT", "QUIT"}) {
        server_.script.silent = {step};
        EXPECT_TRUE(waitsInTurns(encryptedFromTheStart(server_.host()))) << step;
    }
}

// Read in one go, many would take as many turns as one.
TEST_F(SmtpClientTls, TheEventLoopRunsWhileManyCertificatesAreRead)
{
    QFile one(QString::fromLocal8Bit(selfSignedCertificate()));
    ASSERT_TRUE(one.open(QIODevice::ReadOnly));
    const TempTree tree;
    tree.write(u"many.pem", one.readAll().repeated(1500));
    const int withOne = turnsUntilConnected(selfSignedCertificate());
    EXPECT_GT(turnsUntilConnected(QFile::encodeName(tree.path(u"many.pem"))), withOne + 4);
}

TEST_F(SmtpClientTls, TellsAConnectionThatIsCut)
{
    server_.script.tls = MailTls::FromTheStart;
    for (const char *const step : {"MAIL", "TEXT"}) {
        server_.script.cut = {step};
        EXPECT_EQ(failureOf(encryptedFromTheStart(server_.host())), MailFailure::Cut) << step;
    }
}

} // namespace
} // namespace velmora::test
