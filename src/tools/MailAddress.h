// Addresses of mail: what a person writes, checked, so that nothing else can get into a header or a
// command of the mail protocol.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace velmora {

struct MailAddress
{
    QString name;       ///< of a person or a camera; empty when there is none
    QByteArray address; ///< "user@host", ASCII; a host of other letters in its ASCII form

    bool operator==(const MailAddress &) const = default;
};

/// Reads "user@host" or "Name <user@host>", the name quoted or not. Nothing when the address has
/// another form than RFC 5321's without quotes, when letters beyond ASCII stand before the "@", or
/// when the text holds a line break or another control character.
[[nodiscard]] std::optional<MailAddress> mailAddress(QStringView text);

/// The parts between commas and semicolons that stand outside of quotes, without blanks around
/// them; empty ones are left out.
[[nodiscard]] QStringList addressTexts(QStringView list);

} // namespace velmora
