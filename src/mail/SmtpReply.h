// The mail protocol on the wire (RFC 5321): what a server replies, and how the text of a mail is
// sent.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmora {

/// Whatever is longer than this is not a reply.
inline constexpr qsizetype kMaxReplyBytes = qsizetype{64} * 1024;

/// A server's reply to a command.
struct SmtpReply
{
    int code = 0;        // 100 to 599; 0 if what came is not a reply
    QByteArray lastLine; // without its line end

    [[nodiscard]] bool isRefusal() const { return code >= 400; }

    /// The last line as a text for the user, cut if it is long. A server may repeat anything, even
    /// the password it was given: in that case only the code is shown.
    [[nodiscard]] QString shown(const QByteArray &password) const;
};

/// Removes the first reply from the bytes received and returns it. Nothing as long as the reply is
/// incomplete; a reply with code 0 if the bytes are too many for one.
[[nodiscard]] std::optional<SmtpReply> takeReply(QByteArray &bytes);

/// The text of a mail as it is sent: a dot at the start of a line is doubled, and a line with a
/// single dot marks the end. text: each line ends with CR LF.
[[nodiscard]] QByteArray dotStuffed(const QByteArray &text);

} // namespace velmora
