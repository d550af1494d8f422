// The mail section of the settings: the server that sends the program's mails, their sender and
// their recipients.
#pragma once

#include "mail/MailAddress.h"
#include "mail/MailProblem.h"
#include "settings/SettingsFile.h"

#include <QList>

#include <variant>

namespace velmora {

enum class MailEncryption {
    WhenOffered, // by STARTTLS
    Required,    // by STARTTLS, or nothing is sent
    FromTheStart
};

/// Checked: none of its texts can break out of a header or a command.
struct MailAccount
{
    QByteArray url;     // "smtp://host:port" or "smtps://host:port"
    QString serverText; // the host and its port, for messages
    MailEncryption encryption = MailEncryption::WhenOffered;
    MailAddress from;
    QList<MailAddress> to;
    QByteArray user; // UTF-8; empty: no login
    QByteArray password;

    bool operator==(const MailAccount &) const = default;
};

/// Keys Server, From, To, User and Password. Without From, the first recipient is the sender. User
/// and password are sent over an encrypted connection only, except to a server on this machine.
[[nodiscard]] std::variant<MailAccount, MailProblem> mailAccount(const SettingsSnapshot &settings);

} // namespace velmora
