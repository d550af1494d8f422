// Mail addresses: checks what a user wrote, so that nothing else can get into a header or a command
// of the mail protocol.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

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

} // namespace velmora
