// The mail protocol from the sender's name to the farewell (RFC 5321).
#pragma once

#include "net/ConnectedStream.h"
#include "tools/MailAccount.h"

namespace velmora {

/// Of a server's reply: more is nonsense, and more than that is not shown to people.
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

/// Takes the first whole reply off the bytes: nothing when it has not all arrived; a code of 0
/// when it is none.
[[nodiscard]] std::optional<SmtpReply> takeReply(QByteArray &bytes);

/// A mail's text as it is sent: dots at the begin of lines doubled, the line with the dot behind
/// it. text: lines that end in CR LF.
[[nodiscard]] QByteArray dotStuffed(const QByteArray &text);

/// Talks to a server that waits for a mail.
class SmtpDialogue
{
public:
    /// Both outlive the dialogue.
    SmtpDialogue(ConnectedStream &stream, const MailAccount &account);

    /// Hands the mail over; why not, when the server does not take it for all recipients. Says
    /// farewell in either case, and waits but a moment for the answer.
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
