// The text of a mail as it goes over the wire (RFC 5322 and MIME).
#pragma once

#include "base/Clock.h"
#include "mail/MailAccount.h"

#include <QList>

namespace velmora {

struct MailLetter
{
    MailAddress from;
    QList<MailAddress> to;
    QString subject;
    QString body; // line ends of any kind
    WallTime date;
    std::chrono::seconds utcOffset{0}; // of that date's zone, ahead of UTC
    QByteArray id;                     // letters and digits, unique to this mail
};

/// ASCII lines of 998 bytes at most, each ending in CR LF. Names and subjects beyond ASCII become
/// encoded words, and their control characters blanks; a body that is not short lines of ASCII is
/// sent as base64.
[[nodiscard]] QByteArray mailText(const MailLetter &letter);

/// "Tue, 07 Mar 2006 14:05:09 +0100".
[[nodiscard]] QByteArray mailDate(WallTime date, std::chrono::seconds utcOffset);

} // namespace velmora
