// Hands a mail to a mail server (SMTP), on the event loop.
#pragma once

#include "mail/MailAccount.h"
#include "net/Authorities.h"
#include "net/TransferLoop.h"

#include <chrono>

namespace velmora {

/// Something that sends mails.
class MailSender
{
public:
    MailSender() = default;
    Q_DISABLE_COPY_MOVE(MailSender)
    virtual ~MailSender() = default;

    /// Nothing when the server has accepted the mail for all recipients, else why it has not. text:
    /// as mailText() gives it. Ends early when a stop is requested.
    virtual QCoro::Task<std::optional<MailProblem>> send(MailAccount account, QByteArray text,
                                                         std::stop_token stop) = 0;
};

struct SmtpOptions
{
    std::chrono::milliseconds connectLimit = std::chrono::seconds{10}; // up to the login
    std::chrono::milliseconds totalLimit = std::chrono::seconds{30};
    std::optional<AuthorityPlaces> authorities; // none for libcurl's own
};

/// Sends with libcurl. One session, no retry; certificates are checked. If one recipient is
/// refused, the mail is not sent to the others either. The event loop keeps running. The object
/// outlives what it sends.
class SmtpClient final : public MailSender
{
public:
    explicit SmtpClient(SmtpOptions options = {});

    QCoro::Task<std::optional<MailProblem>> send(MailAccount account, QByteArray text,
                                                 std::stop_token stop) override;

private:
    QCoro::Task<std::optional<MailProblem>> trySend(MailAccount account, QByteArray text,
                                                    std::stop_token stop);

    SmtpOptions options_;
    Authorities authorities_;
    TransferLoop loop_;
};

} // namespace velmora
