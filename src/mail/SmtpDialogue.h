// The mail protocol from the sender's name to QUIT (RFC 5321).
#pragma once

#include "mail/MailAccount.h"
#include "net/ConnectedStream.h"

namespace velmora {

/// Limits for a server's reply: a longer one is nonsense; and how much of it is shown to the user.
inline constexpr qsizetype kMaxReplyBytes = qsizetype{64} * 1024;
inline constexpr qsizetype kMaxShownReply = 200;

/// Codes from here on refuse.
inline constexpr int kFirstRefusal = 400;

/// What a server answers to a command.
struct SmtpReply
{
    int code = 0;        // 100 to 599
    QByteArray lastLine; // without its end
};

/// Takes the first whole reply off the bytes: nothing while it is incomplete; code 0 when it is not
/// a reply.
[[nodiscard]] std::optional<SmtpReply> takeReply(QByteArray &bytes);

/// A mail's text as sent: dots at the start of lines doubled, followed by the line with the final
/// dot. text: lines that end in CR LF.
[[nodiscard]] QByteArray dotStuffed(const QByteArray &text);

/// Talks to a server that waits for a mail.
class SmtpDialogue
{
public:
    /// Both outlive the dialogue.
    SmtpDialogue(ConnectedStream &stream, const MailAccount &account);

    /// Hands the mail over; gives the reason if the server does not accept it for all recipients.
    /// Sends QUIT in either case, and waits only briefly for the answer.
    QCoro::Task<std::optional<MailProblem>> hand(QByteArray text);

private:
    using Problem = std::optional<MailProblem>;

    QCoro::Task<Problem> envelopeAndText(QByteArray text);
    QCoro::Task<Problem> step(QByteArray line, MailFailure refusal, int wanted);
    QCoro::Task<std::optional<StreamEnd>> exchange(QByteArray line, SmtpReply *reply);
    QCoro::Task<> farewell();
    [[nodiscard]] MailProblem problem(MailFailure kind, const QString &detail = {}) const;
    [[nodiscard]] QString shown(const SmtpReply &reply) const;

    ConnectedStream &stream_;
    const MailAccount &account_;
    QByteArray received_;
    qint64 receivedBytes_ = 0;
};

} // namespace velmora
