// What the mail protocol looks like on the wire (RFC 5321): a server's replies, and a mail's text.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora {

/// A reply that is longer than this is nonsense.
inline constexpr qsizetype kMaxReplyBytes = qsizetype{64} * 1024;

/// What a server answers to a command.
struct SmtpReply
{
    int code = 0;        // 100 to 599, or 0 for what is not a reply
    QByteArray lastLine; // without its end

    [[nodiscard]] bool isRefusal() const { return code >= 400; }

    /// For the user, on one line. A server may say anything, even the password that it was sent:
    /// then only the code is shown.
    [[nodiscard]] QString shown(const QByteArray &password) const;
};

/// Takes the first whole reply off the bytes: nothing while it is incomplete and not too long.
[[nodiscard]] std::optional<SmtpReply> takeReply(QByteArray &bytes);

/// A mail's text as sent: dots at the start of lines doubled, followed by the line with the final
/// dot. text: lines that end in CR LF.
[[nodiscard]] QByteArray dotStuffed(const QByteArray &text);

} // namespace velmora
