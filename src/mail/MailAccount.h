// The mail section of the settings: the server that sends the program's mails, their sender and
// their recipients. It is checked here, so that nothing else can get into a header or a command of
// the mail protocol.
#pragma once

#include "mail/MailProblem.h"
#include "settings/SettingsFile.h"

#include <QList>
#include <QStringList>

#include <optional>
#include <variant>

namespace velmora {

struct MailAddress
{
    QString name;       ///< of a person or a camera; empty when there is none
    QByteArray address; ///< "user@host", ASCII; an internationalised host in its ASCII form

    bool operator==(const MailAddress &) const = default;
};

/// Reads "user@host" or "Name <user@host>", the name quoted or not. Nothing when the address is not
/// of RFC 5321's form without quotes, has characters beyond ASCII before the "@", or the text holds
/// a line break or any other control character.
[[nodiscard]] std::optional<MailAddress> mailAddress(QStringView text);

/// The parts between commas and semicolons outside quotes, without surrounding blanks; empty ones
/// are left out.
[[nodiscard]] QStringList addressTexts(QStringView list);

enum class MailEncryption {
    WhenOffered, // by STARTTLS
    Required,    // by STARTTLS, or nothing is sent
    FromTheStart
};

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
