// A real mail client and a loopback server, with the event loop between them.
#pragma once

#include "mail/SmtpClient.h"
#include "support/LoopTurns.h"
#include "support/LoopbackMail.h"
#include "support/LoopbackTls.h"
#include "support/RunTask.h"

#include <gtest/gtest.h>

namespace velmora::test {

inline QCoro::Task<> sendInto(MailSender &sender, MailAccount account, QByteArray text,
                              std::stop_token stop, std::optional<MailProblem> &problem)
{
    problem = co_await sender.send(account, text, stop);
}

class SmtpExchange : public testing::Test
{
protected:
    /// To this server, from cam@example.org to guard@example.org.
    [[nodiscard]] MailAccount account() const
    {
        MailAccount account;
        account.url = "smtp://" + server_.host();
        account.serverText = QString::fromLatin1(server_.host());
        account.from = {{}, "cam@example.org"};
        account.to = {{{}, "guard@example.org"}};
        return account;
    }

    [[nodiscard]] MailAccount accountWithLogin() const
    {
        MailAccount mine = account();
        mine.user = "anna";
        mine.password = "se cret";
        return mine;
    }

    /// Makes the server ask for a login.
    void askForLogin(const QByteArray &kinds)
    {
        server_.script.extensions = {"AUTH " + kinds};
        server_.script.user = "anna";
        server_.script.password = "se cret";
    }

    std::optional<MailProblem> send(const MailAccount &account, const QByteArray &text = kText,
                                    std::stop_token stop = {})
    {
        return sendBy(client_, account, text, std::move(stop));
    }

    static std::optional<MailProblem> sendBy(MailSender &sender, const MailAccount &account,
                                             const QByteArray &text = kText,
                                             std::stop_token stop = {})
    {
        std::optional<MailProblem> problem;
        runToEnd(sendInto(sender, account, text, std::move(stop), problem));
        return problem;
    }

    /// Sends to a server that falls silent at some step, and stops sending after a thousand turns
    /// of the event loop; false if its time limit ended it earlier.
    bool waitsInTurns(const MailAccount &account)
    {
        constexpr int kTurns = 1000;
        std::stop_source stop;
        LoopTurns loop;
        loop.then(kTurns, [&stop] { stop.request_stop(); });
        send(account, kText, stop.get_token());
        return loop.turns() >= kTurns;
    }

    /// How sending ends now; Other if the mail is sent.
    MailFailure failure() { return send(account()).value_or(MailProblem{}).kind; }

    [[nodiscard]] ReceivedMail onlyMail() const
    {
        EXPECT_EQ(server_.mails().size(), 1);
        return server_.mails().value(0);
    }

    inline static const QByteArray kText = "Subject: Alarm\r\n\r\nessai\r\n";

    LoopbackMail server_;
    SmtpClient client_{{std::chrono::seconds{5}, std::chrono::seconds{5},
                        AuthorityPlaces{selfSignedCertificate(), {}}}};
};

} // namespace velmora::test
