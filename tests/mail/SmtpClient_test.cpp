// What is sent to a mail server, and what its answers mean.
#include "SmtpExchange.h"

namespace velmora::test {
namespace {

using SmtpClientTest = SmtpExchange;

TEST_F(SmtpClientTest, HandsTheMailOverAndSaysFarewell)
{
    EXPECT_EQ(send(account()), std::nullopt);
    const ReceivedMail mail = onlyMail();
    EXPECT_TRUE(mail.from.startsWith("<cam@example.org>"));
    EXPECT_EQ(mail.recipients, QByteArrayList{"<guard@example.org>"});
    EXPECT_EQ(mail.text, kText);
    EXPECT_FALSE(mail.encrypted);
    EXPECT_FALSE(mail.loggedIn);
    EXPECT_EQ(server_.commands().last(), "QUIT");
    EXPECT_EQ(server_.connections(), 1);
}

TEST_F(SmtpClientTest, NamesEveryRecipient)
{
    MailAccount many = account();
    many.to = {{{}, "a@example.org"}, {{}, "b@example.org"}, {{}, "c@example.org"}};
    EXPECT_EQ(send(many), std::nullopt);
    EXPECT_EQ(onlyMail().recipients,
              (QByteArrayList{"<a@example.org>", "<b@example.org>", "<c@example.org>"}));
}

TEST_F(SmtpClientTest, DotsAtTheStartOfLinesArriveAsTheyAre)
{
    const QByteArray text = "Subject: Alarm\r\n\r\n.\r\n..\r\n.x\r\nend.\r\n.\r\n";
    EXPECT_EQ(send(account(), text), std::nullopt);
    EXPECT_EQ(onlyMail().text, text);
}

TEST_F(SmtpClientTest, ALongMailArrivesWhole)
{
    QByteArray text = "Subject: Alarm\r\n\r\n";
    for (int i = 0; i < 30000; ++i) {
        text += ".line " + QByteArray::number(i) + "\r\n";
    }
    EXPECT_EQ(send(account(), text), std::nullopt);
    EXPECT_TRUE(onlyMail().text == text);
}

TEST_F(SmtpClientTest, ReadsAnswersOfManyLines)
{
    server_.script.extensions = QByteArrayList(20, "X-NOISE " + QByteArray(400, 'n'));
    server_.script.replies = {{"CONNECT", "220-hello\r\n220-there\r\n220 loopback"},
                              {"MAIL", "250-yes\r\n250 indeed"},
                              {"TEXT", "250-taken\r\n250 with thanks"}};
    EXPECT_EQ(send(account()), std::nullopt);
    EXPECT_EQ(server_.mails().size(), 1);
}

TEST_F(SmtpClientTest, LogsInByEitherWay)
{
    for (const QByteArray &way :
         {QByteArray("PLAIN"), QByteArray("LOGIN"), QByteArray("LOGIN PLAIN")}) {
        askForLogin(way);
        EXPECT_EQ(send(accountWithLogin()), std::nullopt) << way.toStdString();
        EXPECT_TRUE(server_.mails().last().loggedIn) << way.toStdString();
    }
    EXPECT_EQ(server_.mails().size(), 3);
}

TEST_F(SmtpClientTest, TellsAWrongPasswordWithoutShowingIt)
{
    for (const QByteArray &way : {QByteArray("PLAIN"), QByteArray("LOGIN")}) {
        askForLogin(way);
        MailAccount wrong = accountWithLogin();
        wrong.password = "guessed!";
        const auto problem = send(wrong);
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->kind, MailFailure::LoginRefused);
        EXPECT_FALSE(mailProblemText(*problem).contains(QStringLiteral("guessed")));
    }
    EXPECT_TRUE(server_.mails().isEmpty());
}

TEST_F(SmtpClientTest, AServerThatEchoesThePasswordIsNotQuoted)
{
    askForLogin("PLAIN");
    for (const QByteArray &secret : {QByteArray("se cret"), QByteArray("se cret").toBase64()}) {
        server_.script.replies = {{"RCPT", "550 no, se crets like " + secret + " do not help"}};
        const auto problem = send(accountWithLogin());
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->kind, MailFailure::RecipientRefused);
        EXPECT_EQ(problem->detail, QStringLiteral("550"));
    }
}

struct RefusalRow
{
    const char *step;
    const char *reply;
    MailFailure kind;
};

constexpr RefusalRow kRefusals[] = {
    {"CONNECT", "554 no service", MailFailure::ServerRefused},
    {"CONNECT", "421 too busy", MailFailure::ServerRefused},
    {"HELO", "550 not you", MailFailure::ServerRefused},
    {"MAIL", "550 not from you", MailFailure::SenderRefused},
    {"MAIL", "452 later", MailFailure::SenderRefused},
    {"RCPT", "550 no such user", MailFailure::RecipientRefused},
    {"RCPT", "450 greylisted", MailFailure::RecipientRefused},
    {"DATA", "451 not now", MailFailure::TextRefused},
    {"TEXT", "554 looks like spam", MailFailure::TextRefused},
    {"TEXT", "452 disk full", MailFailure::TextRefused},
    {"TEXT", "552-many\r\n552 words", MailFailure::TextRefused},
};

TEST_F(SmtpClientTest, SaysWhatWasRefusedInTheServersWords)
{
    for (const RefusalRow &row : kRefusals) {
        SCOPED_TRACE(row.reply);
        server_.script.replies = {{row.step, row.reply}};
        if (row.step == QByteArray("HELO")) {
            server_.script.replies.insert("EHLO", "502 an old server");
        }
        const auto problem = send(account());
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->kind, row.kind);
        const QByteArray last = QByteArray(row.reply).split('\n').last();
        EXPECT_EQ(problem->detail, QString::fromLatin1(last));
        EXPECT_TRUE(mailProblemText(*problem).contains(problem->detail));
        EXPECT_TRUE(mailProblemText(*problem).contains(QString::fromLatin1(server_.host())));
    }
    EXPECT_TRUE(server_.mails().isEmpty());
}

TEST_F(SmtpClientTest, OneRefusedRecipientOfTwoStopsTheMail)
{
    server_.script.replies = {{"RCPT", "550 no"}};
    MailAccount two = account();
    two.to.append(MailAddress{{}, "b@example.org"});
    const auto problem = send(two);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, MailFailure::RecipientRefused);
    EXPECT_FALSE(server_.commands().contains("DATA"));
}

TEST_F(SmtpClientTest, AServersControlCharactersDoNotReachTheMessage)
{
    server_.script.replies = {{"RCPT", "550 a\tb\x1b[31mc" + QByteArray(900, 'z')}};
    const auto problem = send(account());
    ASSERT_TRUE(problem);
    EXPECT_TRUE(problem->detail.startsWith(QStringLiteral("550 a b [31mc")));
    EXPECT_LE(problem->detail.size(), 200);
}

constexpr RefusalRow kNonsense[] = {
    {"CONNECT", "150 odd", MailFailure::Nonsense},
    {"MAIL", "hello", MailFailure::Nonsense},
    {"MAIL", "HTTP/1.1 400 Bad Request", MailFailure::Nonsense},
    {"MAIL", "", MailFailure::Nonsense},
    {"MAIL", "2x0 ok", MailFailure::Nonsense},
    {"MAIL", "650 odd", MailFailure::Nonsense},
    {"MAIL", "\x01\x02\xff", MailFailure::Nonsense},
    {"RCPT", "150 odd", MailFailure::Nonsense},
    {"RCPT", "354 go ahead", MailFailure::Nonsense},
    {"DATA", "250 ok", MailFailure::Nonsense},
    {"TEXT", "354 go on", MailFailure::Nonsense},
};

TEST_F(SmtpClientTest, TellsNonsenseFromAMailServer)
{
    for (const RefusalRow &row : kNonsense) {
        server_.script.replies = {{row.step, row.reply}};
        EXPECT_EQ(failure(), row.kind) << row.step << ' ' << row.reply;
    }
}

TEST_F(SmtpClientTest, DoesNotTakeAnotherServiceForAMailServer)
{
    SmtpClient hasty{{std::chrono::milliseconds{150}, std::chrono::milliseconds{150}, {}}};
    server_.script.replies = {{"CONNECT", "SSH-2.0-OpenSSH_9.2p1"}};
    EXPECT_EQ(sendBy(hasty, account()).value_or(MailProblem{}).kind, MailFailure::TimedOut);
    EXPECT_TRUE(server_.commands().isEmpty());
}

TEST_F(SmtpClientTest, GivesUpAnAnswerWithoutEnd)
{
    for (const char *const step : {"MAIL", "RCPT", "TEXT"}) {
        server_.script.endless = {step};
        EXPECT_EQ(failure(), MailFailure::Nonsense) << step;
    }
    server_.script.endless = {"EHLO"};
    EXPECT_EQ(failure(), MailFailure::Cut);
}

TEST_F(SmtpClientTest, TellsAConnectionThatIsCut)
{
    for (const char *const step : {"CONNECT", "EHLO", "MAIL", "RCPT", "DATA", "TEXT"}) {
        server_.script.cut = {step};
        EXPECT_EQ(failure(), MailFailure::Cut) << step;
    }
}

TEST_F(SmtpClientTest, TellsAServerThatIsNotThere)
{
    MailAccount gone = account();
    gone.url = "smtp://127.0.0.1:1";
    EXPECT_EQ(send(gone).value_or(MailProblem{}).kind, MailFailure::Unreachable);
    gone.url = "smtp://nowhere.invalid";
    EXPECT_EQ(send(gone).value_or(MailProblem{}).kind, MailFailure::NameNotFound);
}

TEST_F(SmtpClientTest, DoesNotWaitForASilentServerBeyondItsLimits)
{
    SmtpClient hasty{{std::chrono::milliseconds{150}, std::chrono::milliseconds{150}, {}}};
    for (const char *const step : {"CONNECT", "EHLO", "MAIL", "RCPT", "DATA", "TEXT"}) {
        server_.script.silent = {step};
        const auto problem = sendBy(hasty, account());
        ASSERT_TRUE(problem) << step;
        EXPECT_EQ(problem->kind, MailFailure::TimedOut) << step;
    }
}

TEST_F(SmtpClientTest, TheUsualLimitsAreTenAndThirtySeconds)
{
    EXPECT_EQ(SmtpOptions().connectLimit, std::chrono::seconds{10});
    EXPECT_EQ(SmtpOptions().totalLimit, std::chrono::seconds{30});
}

TEST_F(SmtpClientTest, AMailThatIsTakenIsSentEvenIfTheFarewellGetsNoAnswer)
{
    for (const QByteArray &how : {QByteArray("silent"), QByteArray("cut")}) {
        server_.script.silent = how == "silent" ? QSet<QByteArray>{"QUIT"} : QSet<QByteArray>{};
        server_.script.cut = how == "cut" ? QSet<QByteArray>{"QUIT"} : QSet<QByteArray>{};
        EXPECT_EQ(send(account()), std::nullopt) << how.toStdString();
    }
    EXPECT_EQ(server_.mails().size(), 2);
}

TEST_F(SmtpClientTest, TheEventLoopRunsWhileTheServerThinks)
{
    for (const char *const step : {"EHLO", "RCPT", "TEXT", "QUIT"}) {
        server_.script.silent = {step};
        EXPECT_TRUE(waitsInTurns(account())) << step;
    }
}

TEST_F(SmtpClientTest, StopsAtOnceAtAnyStep)
{
    for (const char *const step : {"CONNECT", "EHLO", "MAIL", "TEXT", "QUIT"}) {
        server_.script.silent = {step};
        std::stop_source stop;
        LoopTurns loop;
        loop.then(1000, [&] {
            stop.request_stop();
            loop.restart();
        });
        const auto problem = send(account(), kText, stop.get_token());
        EXPECT_LE(loop.turns(), 10) << step;
        const bool taken = QByteArray("QUIT") == step;
        EXPECT_EQ(!problem, taken) << step;
        EXPECT_TRUE(taken || problem->kind == MailFailure::Stopped) << step;
    }
}

TEST_F(SmtpClientTest, StoppedBeforeItSendsNothing)
{
    std::stop_source stop;
    stop.request_stop();
    const auto problem = send(account(), kText, stop.get_token());
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, MailFailure::Stopped);
    EXPECT_TRUE(server_.mails().isEmpty());
}

} // namespace
} // namespace velmora::test
